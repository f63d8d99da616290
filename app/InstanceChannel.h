#pragma once

#include <QObject>
#include <QString>

class QLocalServer;

namespace backplot {

// How a second start hands its program file to the copy already running ("Open With" in
// a file manager while the window is open): a local socket per user, beside the
// instance lock. The copy holding the lock listens; a later one sends the path and ends.
//
// One request per connection, one line of UTF-8: "open", a tab, the path as a file URL
// (so no character of a name can break the line), a tab, the desktop's activation token
// or nothing, and a line feed. The listener answers "ok\n" once it has the line, so the
// sender knows the path arrived before it ends.
class InstanceChannel : public QObject {
    Q_OBJECT
public:
    // The socket of this user, next to InstanceLock::DefaultPath().
    static QString DefaultName();

    explicit InstanceChannel(const QString& name, QObject* parent = nullptr);
    ~InstanceChannel() override;

    // Starts listening. A socket file left by a copy that crashed is removed first: only
    // the holder of the instance lock may call this, so no live copy can own it.
    bool Listen();

    // Hands `path` (absolute) to the copy listening on `name`; true once it answered.
    // Never waits longer than `timeoutMs` in all.
    static bool Send(const QString& name, const QString& path, const QString& activationToken,
                     int timeoutMs = 5000);

    // The activation token the desktop gave this process to bring a window forward
    // (XDG_ACTIVATION_TOKEN on Wayland, DESKTOP_STARTUP_ID on X11), or nothing.
    static QString OwnActivationToken();

signals:
    // A later start asked for `path`; `activationToken` lets the window come forward.
    void OpenRequested(const QString& path, const QString& activationToken);

private:
    void Accept();

    QString name_;
    QLocalServer* server_ = nullptr;
};

} // namespace backplot
