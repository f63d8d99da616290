#include "InstanceChannel.h"

#include "InstanceLock.h"

#include <QDeadlineTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QUrl>

namespace backplot {

namespace {

const QByteArray Verb = "open";
const QByteArray Answer = "ok\n";
// A request longer than this is not one of ours.
constexpr qsizetype LongestLine = 64 * 1024;

} // namespace

QString InstanceChannel::DefaultName()
{
    QString path = InstanceLock::DefaultPath();
    path.chop(int(qstrlen(".lock")));
    return path + QStringLiteral(".socket");
}

InstanceChannel::InstanceChannel(const QString& name, QObject* parent) : QObject(parent), name_(name) {}

InstanceChannel::~InstanceChannel() = default;

bool InstanceChannel::Listen()
{
    QLocalServer::removeServer(name_);
    server_ = new QLocalServer(this);
    // Only this user may connect.
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    connect(server_, &QLocalServer::newConnection, this, &InstanceChannel::Accept);
    return server_->listen(name_);
}

void InstanceChannel::Accept()
{
    while (QLocalSocket* socket = server_->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            if (!socket->canReadLine()) {
                if (socket->bytesAvailable() > LongestLine)
                    socket->abort();
                return;
            }
            const QList<QByteArray> fields = socket->readLine(LongestLine).chopped(1).split('\t');
            socket->write(Answer);
            socket->flush();
            socket->disconnectFromServer();
            if (fields.size() != 3 || fields[0] != Verb)
                return;
            const QUrl url = QUrl::fromEncoded(fields[1]);
            if (url.isLocalFile())
                emit OpenRequested(url.toLocalFile(), QString::fromUtf8(fields[2]));
        });
    }
}

bool InstanceChannel::Send(const QString& name, const QString& path, const QString& activationToken, int timeoutMs)
{
    const QDeadlineTimer deadline(timeoutMs);
    QLocalSocket socket;
    socket.connectToServer(name);
    if (!socket.waitForConnected(int(deadline.remainingTime())))
        return false;
    QByteArray token = activationToken.toUtf8();
    token.replace('\t', ' ').replace('\n', ' ');
    socket.write(Verb + '\t' + QUrl::fromLocalFile(path).toEncoded() + '\t' + token + '\n');
    if (!socket.waitForBytesWritten(int(deadline.remainingTime())))
        return false;
    while (!socket.canReadLine()) {
        if (!socket.waitForReadyRead(int(deadline.remainingTime())))
            return false;
    }
    return socket.readLine() == Answer;
}

QString InstanceChannel::OwnActivationToken()
{
    QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qEnvironmentVariable("DESKTOP_STARTUP_ID") : token;
}

} // namespace backplot
