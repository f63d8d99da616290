#include "SourceView.h"

#include "FixedPitchFont.h"
#include "GCodeLexer.h"

#include <QFile>
#include <QStringDecoder>
#include <QVBoxLayout>
#include <Qsci/qsciscintilla.h>

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

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(editor_);
}

bool SourceView::LoadFile(const QString& path)
{
    QByteArray bytes;
    QFile file(path);
    const bool read = file.open(QIODevice::ReadOnly);
    if (read)
        bytes = file.readAll();
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8.decode(bytes);
    if (utf8.hasError())
        text = QString::fromLatin1(bytes);

    // A read-only editor refuses every change, loading included.
    editor_->setReadOnly(false);
    editor_->setText(text);
    editor_->setReadOnly(true);
    editor_->markerDeleteAll(MarkNumber);
    GoToFirstLine();
    return read && file.error() == QFileDevice::NoError;
}

bool SourceView::MarkLine(int line)
{
    editor_->markerDeleteAll(MarkNumber);
    if (line < 1 || line > LineCount())
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
    // An empty view still has one (empty) line in the editor; it shows no program.
    return editor_->length() == 0 ? 0 : editor_->lines();
}

} // namespace backplot
