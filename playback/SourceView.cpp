#include "SourceView.h"

#include "FixedPitchFont.h"
#include "GCodeLexer.h"
#include "SourceSearchBar.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <QVBoxLayout>
#include <Qsci/qscidocument.h>
#include <Qsci/qsciscintilla.h>
#include <algorithm>
#include <climits>
#include <malloc.h>

namespace backplot {

namespace {

constexpr int MarkNumber = 1;
const QColor MarkColor(255, 236, 139); // a light amber that every text colour reads on

// A window-wide key of the view: it is live only while the view is shown.
QAction* ViewAction(QWidget* view, const char* name, const QString& text, const QKeySequence& keys)
{
    auto* action = new QAction(text, view);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WindowShortcut);
    view->addAction(action);
    return action;
}

} // namespace

SourceView::SourceView(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("picEditor"));

    editor_ = new QsciScintilla(this);
    editor_->setObjectName(QStringLiteral("Editor"));
    editor_->setAccessibleName(QStringLiteral("G-code source"));
    editor_->setUtf8(true);
    const QFont font = FixedPitchFont();
    editor_->setFont(font);
    lexer_ = new GCodeLexer(editor_);
    lexer_->setDefaultFont(font);
    editor_->setLexer(lexer_);

    editor_->setMarginType(0, QsciScintilla::NumberMargin);
    editor_->setMarginLineNumbers(0, true);
    editor_->setMarginsFont(font);
    editor_->setMarginWidth(0, QStringLiteral("000000"));
    editor_->setMarginWidth(1, 0);
    editor_->setWrapMode(QsciScintilla::WrapNone);
    editor_->setReadOnly(true);

    editor_->markerDefine(QsciScintilla::Background, MarkNumber);
    editor_->setMarkerBackgroundColor(MarkColor, MarkNumber);

    // One piece whenever the event loop is free, until the whole text is in.
    pieces_.setInterval(0);
    connect(&pieces_, &QTimer::timeout, this, [this] {
        if (!LoadPiece())
            pieces_.stop();
    });

    searchBar_ = new SourceSearchBar(*this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(editor_);
    layout->addWidget(searchBar_);

    using Mode = SourceSearchBar::Mode;
    find_ = ViewAction(this, "sourceFind", tr("&Find..."), QKeySequence(Qt::CTRL | Qt::Key_F));
    goToLine_ = ViewAction(this, "sourceGoToLine", tr("&Go to Line..."), QKeySequence(Qt::CTRL | Qt::Key_G));
    QAction* again = ViewAction(this, "sourceFindNext", tr("Find Next"), QKeySequence(Qt::Key_F3));
    QAction* back = ViewAction(this, "sourceFindPrevious", tr("Find Previous"), QKeySequence(Qt::SHIFT | Qt::Key_F3));
    connect(find_, &QAction::triggered, this, [this] { searchBar_->Open(Mode::Find); });
    connect(goToLine_, &QAction::triggered, this, [this] { searchBar_->Open(Mode::GoToLine); });
    connect(again, &QAction::triggered, this, [this] { searchBar_->FindAgain(true); });
    connect(back, &QAction::triggered, this, [this] { searchBar_->FindAgain(false); });
    // The context menu comes to the viewport, which holds the text. A file dropped on the
    // text is for the window to open, not text to take in.
    editor_->viewport()->installEventFilter(this);
    editor_->viewport()->setAcceptDrops(false);
}

bool SourceView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != editor_->viewport() || event->type() != QEvent::ContextMenu)
        return QWidget::eventFilter(watched, event);
    QMenu* menu = CreateContextMenu();
    menu->exec(static_cast<QContextMenuEvent*>(event)->globalPos());
    delete menu;
    return true;
}

QMenu* SourceView::CreateContextMenu()
{
    QMenu* menu = editor_->createStandardContextMenu();
    if (!menu)
        menu = new QMenu(editor_);
    menu->addSeparator();
    menu->addAction(find_);
    menu->addAction(goToLine_);
    return menu;
}

bool SourceView::Find(const QString& text, bool forward, bool fromSelectionStart)
{
    LoadUpTo(0); // a match may lie in the text still to come
    int lineFrom = 0, indexFrom = 0, lineTo = 0, indexTo = 0;
    editor_->getSelection(&lineFrom, &indexFrom, &lineTo, &indexTo);
    if (lineFrom < 0) {
        editor_->getCursorPosition(&lineFrom, &indexFrom);
        lineTo = lineFrom;
        indexTo = indexFrom;
    }
    // Forward from the selection's end, back from its start: the match selected now is
    // passed over either way.
    const bool fromEnd = forward && !fromSelectionStart;
    return editor_->findFirst(text, false, false, false, true, forward, fromEnd ? lineTo : lineFrom,
                              fromEnd ? indexTo : indexFrom);
}

bool SourceView::GoToLine(int line)
{
    if (line < 1 || line > LineCount())
        return false;
    editor_->setCursorPosition(line - 1, 0);
    editor_->ensureLineVisible(line - 1);
    return true;
}

bool SourceView::LoadFile(const QString& path)
{
    pieces_.stop();
    file_.close();
    FreshDocument();
    GoToFirstLine();

    file_.setFileName(path);
    if (!file_.open(QIODevice::ReadOnly))
        return false;
    latin1_ = false;
    utf8_ = QStringDecoder(QStringDecoder::Utf8);
    if (isVisible())
        LoadInBackground();
    return true;
}

bool SourceView::LoadPiece()
{
    if (!file_.isOpen())
        return false;
    constexpr qint64 Piece = 1 << 20;
    const QByteArray bytes = file_.read(Piece);
    // The text as the editor takes it, in UTF-8; the decoder keeps a character cut at the
    // piece's end for the next piece, and skips a leading byte-order mark.
    QByteArray text = latin1_ ? QString::fromLatin1(bytes).toUtf8() : QString(utf8_.decode(bytes)).toUtf8();
    if (!latin1_ && utf8_.hasError()) {
        // Not UTF-8 after all: the whole file again, as Latin-1.
        latin1_ = true;
        FreshDocument();
        file_.seek(0);
        return true;
    }
    // The editor's text ends at a NUL byte.
    const qsizetype nul = text.indexOf('\0');
    const bool end = bytes.size() < Piece || nul >= 0;
    if (nul >= 0)
        text.truncate(nul);
    if (!text.isEmpty()) {
        const bool readOnly = editor_->isReadOnly();
        editor_->setReadOnly(false); // a read-only editor refuses every change, loading included
        // Without the change notifications: handling them costs time in proportion to the
        // text already there, which makes a long text's loading slower piece by piece.
        editor_->SendScintilla(QsciScintilla::SCI_SETMODEVENTMASK, 0L);
        editor_->SendScintilla(QsciScintilla::SCI_APPENDTEXT, static_cast<unsigned long>(text.size()), text.constData());
        editor_->SendScintilla(QsciScintilla::SCI_SETMODEVENTMASK, static_cast<unsigned long>(QsciScintilla::SC_MODEVENTMASKALL));
        editor_->setReadOnly(readOnly);
    }
    if (end) {
        file_.close();
        malloc_trim(0); // the pieces' passing buffers go back to the system, not to the heap's reserve
        return false;
    }
    return true;
}

void SourceView::FreshDocument()
{
    // A new document lets the old text's memory go, where clearing would keep its buffers.
    editor_->setDocument(QsciDocument());
    editor_->setUtf8(true);
    editor_->SendScintilla(QsciScintilla::SCI_SETUNDOCOLLECTION, 0L); // read-only: nothing to undo
}

void SourceView::LoadUpTo(int line)
{
    while ((line <= 0 || editor_->lines() <= line) && LoadPiece()) {
    }
}

void SourceView::LoadInBackground()
{
    if (file_.isOpen() && !pieces_.isActive())
        pieces_.start();
}

void SourceView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    LoadInBackground();
}

QsciScintilla* SourceView::Editor() const
{
    const_cast<SourceView*>(this)->LoadUpTo(0);
    return editor_;
}

bool SourceView::MarkLine(int line)
{
    editor_->markerDeleteAll(MarkNumber);
    if (line < 1)
        return false;
    LoadUpTo(line); // the line is in, or the whole text is
    if (line > (editor_->length() == 0 ? 0 : editor_->lines()))
        return false;
    editor_->markerAdd(line - 1, MarkNumber);
    editor_->setCursorPosition(line - 1, 0);
    editor_->ensureLineVisible(line - 1);
    return true;
}

int SourceView::MarkedLine() const
{
    const int found = editor_->markerFindNext(0, 1u << MarkNumber);
    return found < 0 ? 0 : found + 1;
}

void SourceView::GoToFirstLine()
{
    editor_->setCursorPosition(0, 0);
    editor_->setFirstVisibleLine(0);
}

int SourceView::LineCount() const
{
    const_cast<SourceView*>(this)->LoadUpTo(0);
    // An empty view still has one (empty) line in the editor; it shows no program.
    return editor_->length() == 0 ? 0 : editor_->lines();
}

} // namespace backplot
