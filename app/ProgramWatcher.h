#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace backplot {

// Watches the program shown for changes on disk (a CAM system posting it again, an editor
// saving it) and says so once the writing has settled. Writers take several steps
// (truncate, write in pieces, or write a copy and rename it over the file), so a change is
// reported only after `settleMs` without another, and only when the file's size or time
// of change differ from what was seen last. A file renamed over the watched one is
// followed; while the file is missing or empty nothing is reported.
class ProgramWatcher : public QObject {
    Q_OBJECT
public:
    explicit ProgramWatcher(int settleMs, QObject* parent = nullptr);

    // Watches `path` from now on, taking the file as it is now as seen.
    void Follow(const QString& path);
    const QString& Path() const { return path_; }

signals:
    void Changed(const QString& path);

private:
    struct Stamp {
        qint64 size = -1;
        QDateTime changed;
        bool operator==(const Stamp&) const = default;
    };
    Stamp StampNow() const;
    void Settled();

    QFileSystemWatcher watcher_;
    QTimer settle_;
    QString path_;
    Stamp seen_;
};

} // namespace backplot
