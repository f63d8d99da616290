#include "TKZBrowser.h"

#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>

namespace backplot {

TKZBrowser::TKZBrowser(QWidget* parent)
    : QWidget(parent), dialogTitle_(QStringLiteral("Select Folder")),
      chooser_([](QWidget* owner, const QString& title, const QString& start) {
          return QFileDialog::getExistingDirectory(owner, title, start);
      })
{
    txtPath_ = new QLineEdit(this);
    txtPath_->setObjectName(QStringLiteral("txtPath"));
    cmdBrowse_ = new QToolButton(this);
    cmdBrowse_->setObjectName(QStringLiteral("cmdBrowse"));
    cmdBrowse_->setText(QStringLiteral("..."));
    cmdBrowse_->setToolTip(QStringLiteral("Browse for a folder"));
    SetFieldName(QStringLiteral("Folder"));

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(txtPath_, 1);
    layout->addWidget(cmdBrowse_);
    setFocusProxy(txtPath_);

    connect(txtPath_, &QLineEdit::textChanged, this, &TKZBrowser::Changed);
    connect(cmdBrowse_, &QToolButton::clicked, this, &TKZBrowser::cmdBrowse_Click);
}

QString TKZBrowser::Path() const { return txtPath_->text(); }

void TKZBrowser::SetPath(const QString& path) { txtPath_->setText(path); }

void TKZBrowser::SetFieldName(const QString& name)
{
    txtPath_->setAccessibleName(name);
    cmdBrowse_->setAccessibleName(QStringLiteral("Browse for ") + name);
}

void TKZBrowser::cmdBrowse_Click()
{
    const QString typed = txtPath_->text().trimmed();
    const QString start = typed.isEmpty() ? startFolder_ : typed;
    const QString chosen = chooser_(this, dialogTitle_, start);
    if (!chosen.isEmpty())
        SetPath(QDir::toNativeSeparators(chosen));
}

} // namespace backplot
