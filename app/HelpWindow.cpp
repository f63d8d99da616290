#include "HelpWindow.h"

#include "Icons.h"
#include "TranslationTexts.h"
#include "UserDialogs.h"

#include <QAction>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QStyle>
#include <QKeySequence>
#include <QTextBrowser>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

namespace backplot {

namespace {

QToolButton* NavigationButton(QWidget* parent, const char* name, const QString& caption, const QString& accessible,
                              QStyle::StandardPixmap picture)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setText(caption);
    button->setAccessibleName(accessible);
    button->setToolTip(accessible);
    button->setIcon(parent->style()->standardIcon(picture));
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    return button;
}

} // namespace

HelpWindow::HelpWindow(QWidget& owner, const QString& indexPath) : QWidget(&owner, Qt::Window)
{
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("Tarvo Backplot Help"));
    setWindowIcon(Icons::AppIcon());
    // Kept when closed: the next Help command shows it again where the user put it.
    setAttribute(Qt::WA_DeleteOnClose, false);

    txtHelp_ = new QTextBrowser(this);
    txtHelp_->setObjectName(QStringLiteral("txtHelp"));
    txtHelp_->setAccessibleName(QStringLiteral("Help text"));
    // Links to the web go to the desktop's browser; the guide's own pages stay here.
    txtHelp_->setOpenExternalLinks(true);
    txtHelp_->setSource(QUrl::fromLocalFile(QFileInfo(indexPath).absoluteFilePath()));

    cmdBack_ = NavigationButton(this, "cmdBack", QStringLiteral("&Back"), QStringLiteral("Back"),
                                QStyle::SP_ArrowBack);
    cmdForward_ = NavigationButton(this, "cmdForward", QStringLiteral("&Forward"), QStringLiteral("Forward"),
                                   QStyle::SP_ArrowForward);
    cmdHome_ = NavigationButton(this, "cmdHome", QStringLiteral("&Contents"), QStringLiteral("Contents"),
                                QStyle::SP_DirHomeIcon);
    cmdBack_->setShortcut(QKeySequence::Back);
    cmdForward_->setShortcut(QKeySequence::Forward);
    cmdBack_->setEnabled(false);
    cmdForward_->setEnabled(false);

    connect(cmdBack_, &QToolButton::clicked, txtHelp_, &QTextBrowser::backward);
    connect(cmdForward_, &QToolButton::clicked, txtHelp_, &QTextBrowser::forward);
    connect(cmdHome_, &QToolButton::clicked, txtHelp_, &QTextBrowser::home);
    connect(txtHelp_, &QTextBrowser::backwardAvailable, cmdBack_, &QToolButton::setEnabled);
    connect(txtHelp_, &QTextBrowser::forwardAvailable, cmdForward_, &QToolButton::setEnabled);

    auto* close = new QAction(this);
    close->setShortcut(QKeySequence(Qt::Key_Escape));
    connect(close, &QAction::triggered, this, &QWidget::close);
    addAction(close);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdBack_);
    buttons->addWidget(cmdForward_);
    buttons->addWidget(cmdHome_);
    buttons->addStretch(1);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(txtHelp_, 1);
    resize(780, 640);
}

std::string HelpWindow::MissingMessage(const QString& indexPath)
{
    return "The help cannot be shown: the file " + indexPath.toStdString() +
           " is missing. Reinstall Tarvo Backplot or put its help folder back next to the program.";
}

HelpWindow* HelpWindow::ShowContents(QWidget& owner, UserDialogs& dialogs, const QString& indexPath)
{
    if (!QFileInfo(indexPath).isFile()) {
        dialogs.Message(MissingMessage(indexPath), texts::MessageTitle, MsgIcon::Exclamation, MsgButtons::Ok);
        return nullptr;
    }
    auto* help = owner.findChild<HelpWindow*>(QStringLiteral("frmHelp"), Qt::FindDirectChildrenOnly);
    if (!help)
        help = new HelpWindow(owner, indexPath);
    else
        help->txtHelp_->home();
    help->show();
    help->raise();
    help->activateWindow();
    return help;
}

} // namespace backplot
