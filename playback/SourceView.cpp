#include "SourceView.h"

#include "FixedPitchFont.h"
#include "GCodeLexer.h"

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

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(editor_);
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
