#pragma once

#include <QString>
#include <QWidget>
#include <functional>

class QLineEdit;
class QToolButton;

namespace backplot {

// A folder field: a line edit `txtPath` and a browse button `cmdBrowse` that opens the
// platform's folder dialog. Path is the value the dialogs read and write (the user
// property); Changed is raised whenever the text changes, typed, browsed or set.
class TKZBrowser : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString Path READ Path WRITE SetPath NOTIFY Changed USER true)
public:
    // Asks for a folder: gets the parent, the dialog title and the folder to start in;
    // gives the folder chosen, or an empty text when cancelled.
    using FolderChooser = std::function<QString(QWidget* parent, const QString& title, const QString& start)>;

    explicit TKZBrowser(QWidget* parent = nullptr);

    QString Path() const;
    void SetPath(const QString& path);

    // Where the folder dialog starts while the field is empty.
    void SetStartFolder(const QString& folder) { startFolder_ = folder; }
    // The title of the folder dialog.
    void SetDialogTitle(const QString& title) { dialogTitle_ = title; }
    // What a screen reader calls the field; the button is "Browse for " followed by it.
    void SetFieldName(const QString& name);
    // Replaces the folder dialog (QFileDialog::getExistingDirectory), for tests.
    void SetFolderChooser(FolderChooser chooser) { chooser_ = std::move(chooser); }

    QLineEdit* Field() const { return txtPath_; }
    QToolButton* Button() const { return cmdBrowse_; }

signals:
    void Changed(const QString& path);

private:
    void cmdBrowse_Click();

    QLineEdit* txtPath_ = nullptr;
    QToolButton* cmdBrowse_ = nullptr;
    QString startFolder_;
    QString dialogTitle_;
    FolderChooser chooser_;
};

} // namespace backplot
