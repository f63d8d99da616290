#include "InstanceLock.h"

#include <QDir>
#include <QStandardPaths>

namespace backplot {

InstanceLock::InstanceLock(const QString& lockPath) : lock_(lockPath) {}

QString InstanceLock::DefaultPath()
{
    // The runtime folder is per user; the shared temporary folder needs the user in the name.
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    QString name = QStringLiteral("tarvo-backplot.lock");
    if (folder.isEmpty() || !QDir().mkpath(folder)) {
        folder = QDir::tempPath();
        QString user = qEnvironmentVariable("USER");
        if (user.isEmpty())
            user = qEnvironmentVariable("USERNAME");
        name = QStringLiteral("tarvo-backplot-%1.lock").arg(user);
    }
    return folder + QLatin1Char('/') + name;
}

bool InstanceLock::TryAcquire() { return lock_.isLocked() || lock_.tryLock(0); }

} // namespace backplot
