#include "GuiDialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QPageSetupDialog>
#include <QPrinter>
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

// A save dialog that, when asked to, accepts only the names of existing files.
class SaveDialog : public QFileDialog {
public:
    SaveDialog(QWidget* parent, bool fileMustExist) : QFileDialog(parent), fileMustExist_(fileMustExist) {}

    void accept() override
    {
        const QStringList chosen = selectedFiles();
        if (fileMustExist_ && !chosen.isEmpty() && !QFileInfo(chosen.first()).isDir() &&
            !QFileInfo(chosen.first()).isFile()) {
            QMessageBox::warning(this, windowTitle(),
                                 QFileInfo(chosen.first()).fileName() +
                                     QStringLiteral("\nFile not found.\nCheck the file name and try again."));
            return;
        }
        QFileDialog::accept();
    }

private:
    bool fileMustExist_;
};

// Runs `show` with the arrow pointer even while the hourglass is up.
template <typename Show>
auto WithArrow(MousePointer pointer, Show show)
{
    const bool busy = pointer == MousePointer::Hourglass;
    if (busy)
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    auto result = show();
    if (busy)
        QApplication::restoreOverrideCursor();
    return result;
}

QString LineBreaks(const std::string& text)
{
    QString result = QString::fromStdString(text);
    result.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    result.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return result;
}

} // namespace

QStringList FilterPatterns(const QString& patternText)
{
    QStringList patterns;
    const auto add = [&patterns](const QString& pattern) {
        if (!pattern.isEmpty() && !patterns.contains(pattern))
            patterns.append(pattern);
    };
    for (const QString& part : patternText.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const QString pattern = part.trimmed();
        if (pattern == QLatin1String("*.*") || pattern == QLatin1String("*")) {
            add(QStringLiteral("*"));
            continue;
        }
        add(pattern);
        add(pattern.toLower());
        add(pattern.toUpper());
    }
    if (patterns.isEmpty())
        patterns.append(QStringLiteral("*"));
    return patterns;
}

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
    const int result = WithArrow(pointer_, [&] { return box.exec(); });

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
    // The description alone is shown; the patterns in parentheses are what matches.
    const QString filter = QString::fromStdString(filterDescription).trimmed() + QLatin1String(" (") +
                           FilterPatterns(QString::fromStdString(filterPattern)).join(QLatin1Char(' ')) +
                           QLatin1Char(')');
    const QString chosen = WithArrow(pointer_, [&] {
        return QFileDialog::getOpenFileName(parent_, QString::fromStdString(title), QString::fromStdString(initialDir),
                                            filter, nullptr, QFileDialog::HideNameFilterDetails);
    });
    if (chosen.isEmpty())
        return std::nullopt;
    return chosen.toStdString();
}

std::optional<std::string> GuiDialogs::SaveFileName(const std::string& title, const std::string& initialDir,
                                                    const std::vector<FileFilter>& filters, bool fileMustExist)
{
    SaveDialog dialog(parent_, fileMustExist);
    dialog.setWindowTitle(QString::fromStdString(title));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // The platform's own dialog would not ask this class whether a name may be accepted.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setDirectory(QString::fromStdString(initialDir));
    // Each description is shown as it stands; one that does not name its pattern in
    // parentheses gets it added, since that is where the dialog reads what to match.
    QStringList names;
    for (const FileFilter& f : filters) {
        const QString description = QString::fromStdString(f.Description).trimmed();
        const QString pattern = QLatin1Char('(') + QString::fromStdString(f.Pattern).trimmed() + QLatin1Char(')');
        names.append(description.endsWith(pattern) ? description : description + QLatin1Char(' ') + pattern);
    }
    dialog.setNameFilters(names);
    if (!names.isEmpty())
        dialog.selectNameFilter(names.first());
    const int result = WithArrow(pointer_, [&] { return dialog.exec(); });
    if (result != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().first().toStdString();
}

std::string GuiDialogs::TextPrompt(const std::string& prompt, const std::string& title,
                                   const std::string& defaultText)
{
    QInputDialog dialog(parent_);
    dialog.setWindowTitle(QString::fromStdString(title));
    dialog.setLabelText(LineBreaks(prompt));
    dialog.setTextValue(QString::fromStdString(defaultText));
    const int result = WithArrow(pointer_, [&] { return dialog.exec(); });
    return result == QDialog::Accepted ? dialog.textValue().toStdString() : std::string();
}

bool GuiDialogs::PrinterSetup()
{
    if (!printer_)
        return false;
    QPageSetupDialog dialog(printer_, parent_);
    dialog.setWindowTitle(QStringLiteral("Page Setup"));
    return WithArrow(pointer_, [&] { return dialog.exec(); }) == QDialog::Accepted;
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
