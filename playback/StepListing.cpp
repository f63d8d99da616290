#include "StepListing.h"

#include "FixedPitchFont.h"

#include <QTextBlock>
#include <QTextCursor>

namespace backplot {

StepListing::StepListing(QWidget* parent) : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("Editor1"));
    setAccessibleName(QStringLiteral("Step listing"));
    setReadOnly(true);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFont(FixedPitchFont());
    setHidden(true);
}

void StepListing::Clear()
{
    clear();
    empty_ = true;
    currentLine_ = 1;
}

void StepListing::SetCurrentLine(int line) { currentLine_ = std::max(line, 1); }

int StepListing::LineCount() const { return empty_ ? 0 : document()->blockCount(); }

QString StepListing::LineText(int line) const
{
    if (line < 1 || line > LineCount())
        return {};
    return document()->findBlockByNumber(line - 1).text();
}

void StepListing::WriteLine(const QString& text)
{
    QTextCursor cursor(document());
    empty_ = false; // from now on the document's first block is line 1
    const int have = document()->blockCount();
    if (currentLine_ > have) {
        cursor.movePosition(QTextCursor::End);
        cursor.insertText(QString(currentLine_ - have, QLatin1Char('\n')) + text);
    } else {
        const QTextBlock block = document()->findBlockByNumber(currentLine_ - 1);
        cursor.setPosition(block.position());
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.insertText(text);
    }
    const QTextBlock written = document()->findBlockByNumber(currentLine_ - 1);
    QTextCursor view(written);
    setTextCursor(view);
    ensureCursorVisible();
}

} // namespace backplot
