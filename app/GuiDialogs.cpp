#include "GuiDialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace backplot {

namespace {

QMessageBox::Icon BoxIcon(MsgIcon icon)
{
    switch (icon) {
    case MsgIcon::Critical:
        return QMessageBox::Critical;
    case MsgIcon::Question:
        return QMessageBox::Question;
    case MsgIcon::Exclamation:
        return QMessageBox::Warning;
    case MsgIcon::Information:
        return QMessageBox::Information;
    case MsgIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons BoxButtons(MsgButtons buttons)
{
    switch (buttons) {
    case MsgButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MsgButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MsgButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MsgButtons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

QString LineBreaks(const std::string& text)
{
    QString result = QString::fromStdString(text);
    result.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    result.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return result;
}

} // namespace

GuiDialogs::GuiDialogs(QWidget* parent) : parent_(parent) {}

GuiDialogs::~GuiDialogs() { SetPointer(MousePointer::Default); }

MsgAnswer GuiDialogs::Message(const std::string& text, const std::string& title, MsgIcon icon,
                              MsgButtons buttons)
{
    QMessageBox box(BoxIcon(icon), QString::fromStdString(title), LineBreaks(text), BoxButtons(buttons),
                    parent_);
    // The first button is the default one, as in the classic message box.
    switch (buttons) {
    case MsgButtons::Ok:
    case MsgButtons::OkCancel:
        box.setDefaultButton(QMessageBox::Ok);
        break;
    case MsgButtons::YesNo:
    case MsgButtons::YesNoCancel:
        box.setDefaultButton(QMessageBox::Yes);
        break;
    }
    const bool busy = pointer_ == MousePointer::Hourglass;
    if (busy)
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int result = box.exec();
    if (busy)
        QApplication::restoreOverrideCursor();

    switch (result) {
    case QMessageBox::Cancel:
        return MsgAnswer::Cancel;
    case QMessageBox::Yes:
        return MsgAnswer::Yes;
    case QMessageBox::No:
        return MsgAnswer::No;
    default:
        break;
    }
    // Closing a box with the window's close button or Esc counts as its cancelling button.
    if (result != QMessageBox::Ok && buttons == MsgButtons::OkCancel)
        return MsgAnswer::Cancel;
    return MsgAnswer::Ok;
}

std::optional<std::string> GuiDialogs::OpenFileName(const std::string& title, const std::string& initialDir,
                                                    const std::string& filterDescription,
                                                    const std::string& filterPattern)
{
    const QString filter =
        QString::fromStdString(filterDescription).trimmed() + QLatin1String(" (") +
        QString::fromStdString(filterPattern).trimmed() + QLatin1Char(')');
    const bool busy = pointer_ == MousePointer::Hourglass;
    if (busy)
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    const QString chosen = QFileDialog::getOpenFileName(parent_, QString::fromStdString(title),
                                                        QString::fromStdString(initialDir), filter);
    if (busy)
        QApplication::restoreOverrideCursor();
    if (chosen.isEmpty())
        return std::nullopt;
    return chosen.toStdString();
}

void GuiDialogs::SetPointer(MousePointer pointer)
{
    if (pointer == pointer_)
        return;
    if (pointer == MousePointer::Hourglass)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
    pointer_ = pointer;
}

} // namespace backplot
