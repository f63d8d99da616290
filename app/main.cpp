#include "InstanceLock.h"
#include "SettingsStore.h"
#include "frmBackplot.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    // These name the per-user data folder; the display name keeps window titles as they are.
    QCoreApplication::setOrganizationName(QString::fromLatin1(backplot::SettingsOrganization));
    QCoreApplication::setApplicationName(QString::fromLatin1(backplot::SettingsApplication));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tarvo Backplot"));

    // A second copy ends at once, without a word; the first stays as it is.
    backplot::InstanceLock lock(backplot::InstanceLock::DefaultPath());
    if (!lock.TryAcquire())
        return 0;

    backplot::frmBackplot window;
    window.resize(1000, 720);
    window.show();
    return app.exec();
}
