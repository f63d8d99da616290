#pragma once

#include "ProgramWatcher.h"

#include <QObject>
#include <QString>
#include <QTimer>

namespace backplot {

class frmBackplot;

// Programs that reach the window from outside its Open command: a file handed over by a
// later start ("Open With" in a file manager), files dropped on the window, and the
// program shown changing on disk.
//
// A handed-over or dropped file opens as File > Open would (the recent files, the menus,
// the status texts), through frmBackplot::OpenPath. While single block step or slow motion
// runs it is refused with a note in the status line, as the Open button is; while an open
// runs, a dialog is up or a menu is open it waits for them.
//
// A changed program is opened again (its place in the recent files kept), and the view
// stays as it was when the new extents still hold the whole of it; else the new program
// is shown whole. While playback runs or a dialog is up this waits until they end.
class ExternalOpens : public QObject {
    Q_OBJECT
public:
    // How long a program must rest after a change before it is opened again.
    static constexpr int SettleMs = 300;

    explicit ExternalOpens(frmBackplot& window);

    // A later start's file: the window comes to the front, with the desktop's activation
    // token where it gave one, and opens it.
    void OpenHandedOver(const QString& path, const QString& activationToken);
    // The window now shows `path`: it is watched from here on.
    void Follow(const QString& path) { watcher_.Follow(path); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Open(const QString& path, int othersIgnored);
    void Reload();
    // An open is running, or a modal dialog or a menu has the user's attention.
    bool MustWait() const;
    bool PlaybackRuns() const;
    void Retry();

    frmBackplot& window_;
    ProgramWatcher watcher_;
    QTimer retry_;
    QString waitingOpen_;   // a handed-over file waiting for a dialog or an open
    int waitingOthers_ = 0; // dropped files left out with it
    bool waitingReload_ = false;
};

} // namespace backplot
