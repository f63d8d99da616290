#include "DataFolder.h"
#include "ProgramFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace backplot {

namespace {

QString WithSeparator(QString folder)
{
    folder = folder.trimmed();
    if (!folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    return folder;
}

// Permission bits do not tell the whole story (a read-only mount, root on a
// network share), so try what the translator will do: create a file there.
bool CanCreateFilesIn(const QString& folder)
{
    if (!QDir(folder).exists())
        return false;
    QTemporaryFile probe(folder + QStringLiteral("write-probe-XXXXXX"));
    return probe.open();
}

} // namespace

DataFolder DataFolder::Choose(const QString& programFolder, const QString& fallback)
{
    // An installed bin folder belongs to the package manager and to every user at once,
    // so an installed copy never writes there, not even as root.
    if (!ProgramFiles(programFolder).Installed() && CanCreateFilesIn(programFolder))
        return {WithSeparator(programFolder), false};
    QDir().mkpath(fallback);
    return {WithSeparator(fallback), true};
}

DataFolder DataFolder::ForThisProgram()
{
    return Choose(QCoreApplication::applicationDirPath(),
                  QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
}

} // namespace backplot
