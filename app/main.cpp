#include "InstanceLock.h"
#include "SettingsStore.h"
#include "frmBackplot.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    // These name the per-user data folder. No display name is set: the platform would
    // append it to every window title that does not already end with it, and each title
    // must read exactly as given ("Corvane Backplot", "Open File", ...).
    QCoreApplication::setOrganizationName(QString::fromLatin1(backplot::SettingsOrganization));
    QCoreApplication::setApplicationName(QString::fromLatin1(backplot::SettingsApplication));

    // A second copy ends at once, without a word; the first stays as it is.
    backplot::InstanceLock lock(backplot::InstanceLock::DefaultPath());
    if (!lock.TryAcquire())
        return 0;

    backplot::frmBackplot window;
    window.resize(1000, 720);
    window.show();
    return app.exec();
}
