#include "InstanceLock.h"
#include "SettingsStore.h"
#include "StartArguments.h"
#include "frmBackplot.h"

#include <QApplication>
#include <QDir>
#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    // These name the per-user data folder. No display name is set: the platform would
    // append it to every window title that does not already end with it, and each title
    // must read exactly as given ("Corvane Backplot", "Open File", ...).
    QCoreApplication::setOrganizationName(QString::fromLatin1(backplot::SettingsOrganization));
    QCoreApplication::setApplicationName(QString::fromLatin1(backplot::SettingsApplication));
    // Ties the windows to the installed menu entry (and its icon) on Wayland desktops.
    QGuiApplication::setDesktopFileName(QStringLiteral("tarvo-backplot"));

    // A second copy ends at once, without a word; the first stays as it is.
    backplot::InstanceLock lock(backplot::InstanceLock::DefaultPath());
    if (!lock.TryAcquire())
        return 0;

    // QApplication has taken its own options (-platform, ...) out already.
    const backplot::StartArguments start =
        backplot::StartArguments::Parse(QCoreApplication::arguments().mid(1), QDir::currentPath());
    if (!start.Error.isEmpty()) {
        std::fprintf(stderr, "backplot: %s\n%s", qPrintable(start.Error), backplot::StartArguments::Usage);
        return 2;
    }

    backplot::frmBackplot window;
    window.resize(1000, 720);
    window.show();
    start.OpenWhenShown(window);
    return app.exec();
}
