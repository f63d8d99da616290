#include "ProgramWatcher.h"

#include <QFileInfo>

namespace backplot {

ProgramWatcher::ProgramWatcher(int settleMs, QObject* parent) : QObject(parent)
{
    settle_.setSingleShot(true);
    settle_.setInterval(settleMs);
    connect(&settle_, &QTimer::timeout, this, &ProgramWatcher::Settled);
    // Every sign of writing starts the wait again.
    connect(&watcher_, &QFileSystemWatcher::fileChanged, &settle_, qOverload<>(&QTimer::start));
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, &settle_, qOverload<>(&QTimer::start));
}

void ProgramWatcher::Follow(const QString& path)
{
    if (!watcher_.files().isEmpty())
        watcher_.removePaths(watcher_.files());
    if (!watcher_.directories().isEmpty())
        watcher_.removePaths(watcher_.directories());
    settle_.stop();
    path_ = QFileInfo(path).absoluteFilePath();
    seen_ = StampNow();
    watcher_.addPath(path_);
    // The folder tells of a file renamed over this one, which ends the file's own watch.
    watcher_.addPath(QFileInfo(path_).absolutePath());
}

ProgramWatcher::Stamp ProgramWatcher::StampNow() const
{
    const QFileInfo file(path_);
    if (!file.isFile())
        return {};
    return {file.size(), file.fileTime(QFileDevice::FileModificationTime)};
}

void ProgramWatcher::Settled()
{
    if (path_.isEmpty())
        return;
    if (!watcher_.files().contains(path_) && QFileInfo(path_).isFile())
        watcher_.addPath(path_);
    const Stamp now = StampNow();
    // Missing or empty: the writer is not done; its next step is heard again.
    if (now.size <= 0 || now == seen_)
        return;
    seen_ = now;
    emit Changed(path_);
}

} // namespace backplot
