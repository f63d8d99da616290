#include "SourceSearchBar.h"

#include "SourceView.h"

#include <QHBoxLayout>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <Qsci/qsciscintilla.h>

namespace backplot {

namespace {

QToolButton* BarButton(QWidget* parent, const char* name, const QString& text, Qt::ArrowType arrow)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setAccessibleName(text);
    button->setToolTip(text);
    if (arrow != Qt::NoArrow)
        button->setArrowType(arrow);
    else
        button->setText(text);
    button->setAutoRaise(true);
    // The keyboard stays in the field while the buttons are clicked.
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

} // namespace

SourceSearchBar::SourceSearchBar(SourceView& view) : QWidget(&view), view_(view)
{
    setObjectName(QStringLiteral("sourceSearch"));
    prompt_ = new QLabel(this);
    field_ = new QLineEdit(this);
    field_->setObjectName(QStringLiteral("sourceSearchField"));
    field_->setClearButtonEnabled(true);
    field_->installEventFilter(this);
    prompt_->setBuddy(field_);
    previous_ = BarButton(this, "sourceFindPrevious", tr("Previous match"), Qt::UpArrow);
    next_ = BarButton(this, "sourceFindNext", tr("Next match"), Qt::DownArrow);
    QToolButton* close = BarButton(this, "sourceSearchClose", tr("Close"), Qt::NoArrow);
    note_ = new QLabel(this);
    note_->setObjectName(QStringLiteral("sourceSearchNote"));

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(prompt_);
    layout->addWidget(field_, 1);
    layout->addWidget(previous_);
    layout->addWidget(next_);
    layout->addWidget(note_);
    layout->addWidget(close);

    connect(previous_, &QToolButton::clicked, this, [this] { FindAgain(false); });
    connect(next_, &QToolButton::clicked, this, [this] { FindAgain(true); });
    connect(close, &QToolButton::clicked, this, &SourceSearchBar::Close);
    // A new text is looked for from where the last match began, so typing refines it.
    connect(field_, &QLineEdit::textEdited, this, [this] {
        note_->clear();
        if (mode_ != Mode::Find)
            return;
        findText_ = field_->text();
        if (!findText_.isEmpty() && !view_.Find(findText_, true, true))
            note_->setText(tr("Not found"));
    });
    hide();
}

void SourceSearchBar::Open(Mode mode)
{
    mode_ = mode;
    note_->clear();
    const bool find = mode == Mode::Find;
    previous_->setVisible(find);
    next_->setVisible(find);
    if (find) {
        prompt_->setText(tr("&Find:"));
        field_->setValidator(nullptr);
        field_->setAccessibleName(tr("Find in the G-code source"));
        const QString selected = view_.Editor()->selectedText();
        if (!selected.isEmpty() && !selected.contains(QLatin1Char('\n')))
            findText_ = selected;
        field_->setText(findText_);
    } else {
        const int lines = std::max(view_.LineCount(), 1);
        prompt_->setText(tr("&Go to line (1-%1):").arg(lines));
        field_->setValidator(new QIntValidator(1, lines, field_));
        field_->setAccessibleName(tr("Go to line"));
        int line = 0, index = 0;
        view_.Editor()->getCursorPosition(&line, &index);
        field_->setText(QString::number(line + 1));
    }
    show();
    field_->setFocus(Qt::ShortcutFocusReason);
    field_->selectAll();
}

void SourceSearchBar::Close()
{
    hide();
    view_.Editor()->setFocus(Qt::OtherFocusReason);
}

QString SourceSearchBar::Note() const { return note_->text(); }

void SourceSearchBar::FindAgain(bool forward)
{
    note_->clear();
    if (findText_.isEmpty())
        return;
    if (!view_.Find(findText_, forward))
        note_->setText(tr("Not found"));
}

void SourceSearchBar::Accept(bool forward)
{
    if (mode_ == Mode::Find)
        return FindAgain(forward);
    bool ok = false;
    const int line = field_->text().toInt(&ok);
    if (ok && view_.GoToLine(line))
        return Close();
    note_->setText(tr("No line %1: the program has %2").arg(field_->text()).arg(view_.LineCount()));
}

bool SourceSearchBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != field_ || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Escape:
        Close();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // Taken here: the field would pass Enter on up to the window, which steps with it.
        Accept(!(key->modifiers() & Qt::ShiftModifier));
        return true;
    default:
        return false;
    }
}

} // namespace backplot
