#include "ProgramFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace backplot {

ProgramFiles::ProgramFiles(const QString& programFolder) : programFolder_(QDir::cleanPath(programFolder)) {}

ProgramFiles ProgramFiles::ForThisProgram() { return ProgramFiles(QCoreApplication::applicationDirPath()); }

QString ProgramFiles::ShareFolder() const
{
    // BACKPLOT_SHARE_FROM_BIN is the install layout's data folder relative to its bin folder.
    return QDir::cleanPath(programFolder_ + QLatin1Char('/') + QStringLiteral(BACKPLOT_SHARE_FROM_BIN));
}

bool ProgramFiles::Installed() const { return QFileInfo(ShareFolder()).isDir(); }

QString ProgramFiles::HelpIndex() const
{
    const QString beside = programFolder_ + QStringLiteral("/help/index.html");
    if (QFileInfo(beside).isFile())
        return beside;
    const QString installed = ShareFolder() + QStringLiteral("/help/index.html");
    if (QFileInfo(installed).isFile())
        return installed;
    return beside;
}

QString ProgramFiles::SamplesFolder() const
{
    const QString installed = ShareFolder() + QStringLiteral("/examples");
    if (QFileInfo(installed).isDir())
        return installed;
    return programFolder_;
}

} // namespace backplot
