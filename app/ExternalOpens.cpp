#include "ExternalOpens.h"

#include "StartArguments.h"
#include "TranslationTexts.h"
#include "UserDialogs.h"
#include "frmBackplot.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QUrl>

namespace backplot {

namespace {

// The local files among dropped URLs, in their order.
QStringList LocalFiles(const QMimeData* data)
{
    QStringList files;
    if (data && data->hasUrls())
        for (const QUrl& url : data->urls())
            if (url.isLocalFile())
                files << url.toLocalFile();
    return files;
}

} // namespace

ExternalOpens::ExternalOpens(frmBackplot& window) : QObject(&window), window_(window), watcher_(SettleMs)
{
    retry_.setSingleShot(true);
    retry_.setInterval(250);
    connect(&retry_, &QTimer::timeout, this, &ExternalOpens::Retry);
    connect(&watcher_, &ProgramWatcher::Changed, this, [this](const QString& path) {
        // Still the program shown (the watcher names it as an absolute, clean path).
        const QString shown = QFileInfo(QString::fromStdString(window_.FileName())).absoluteFilePath();
        if (window_.programLoaded() && path == shown) {
            waitingReload_ = true;
            Retry();
        }
    });
    window_.setAcceptDrops(true);
    window_.installEventFilter(this);
}

void ExternalOpens::OpenHandedOver(const QString& path, const QString& activationToken)
{
    if (window_.isMinimized())
        window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
    window_.show();
    window_.raise();
    // Wayland lets a window forward only with the token of the start that asked for it.
    if (!activationToken.isEmpty() && QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    window_.activateWindow();
    Open(path, 0);
}

bool ExternalOpens::MustWait() const
{
    return window_.fileOperation() || QApplication::activeModalWidget() || QApplication::activePopupWidget();
}

bool ExternalOpens::PlaybackRuns() const
{
    const PlaybackState& playback = window_.playback();
    return playback.StepMode || playback.SlowMode || playback.SlowPaused;
}

void ExternalOpens::Open(const QString& path, int othersIgnored)
{
    if (MustWait()) {
        waitingOpen_ = path;
        waitingOthers_ = othersIgnored;
        return retry_.start();
    }
    QLabel& comment = *window_.lblComment();
    if (PlaybackRuns()) {
        comment.setText(QStringLiteral("  %1 was not opened: single block step or slow motion is running (Esc ends it).")
                            .arg(path));
        return;
    }
    if (!QFileInfo(path).isFile()) {
        window_.dialogs().Message(StartArguments::MissingMessage(path), texts::MessageTitle, MsgIcon::Critical,
                                  MsgButtons::Ok);
        return;
    }
    window_.OpenPath(path.toStdString());
    if (othersIgnored > 0)
        comment.setText(comment.text() + (othersIgnored == 1
                                              ? QStringLiteral("   (1 other dropped file ignored: one program at a time)")
                                              : QStringLiteral("   (%1 other dropped files ignored: one program at a time)")
                                                    .arg(othersIgnored)));
}

void ExternalOpens::Retry()
{
    if (!waitingOpen_.isEmpty()) {
        const QString path = std::exchange(waitingOpen_, QString());
        Open(path, waitingOthers_);
    }
    if (!waitingReload_)
        return;
    if (MustWait() || PlaybackRuns())
        return retry_.start();
    waitingReload_ = false;
    Reload();
}

void ExternalOpens::Reload()
{
    const ViewTransform before = window_.plotter().View;
    if (!window_.ReloadProgram())
        return;
    ViewTransform& view = window_.plotter().View;
    // The view as it was, where the new drawing still covers all of it; the extents are
    // the new program's, and the next SetCoords fits the old window to the canvas.
    if (before.ViewX1 >= view.MinX && before.ViewX2 <= view.MaxX && before.ViewY1 >= view.MinY &&
        before.ViewY2 <= view.MaxY) {
        const ViewTransform drawn = view;
        view = before;
        view.MinX = drawn.MinX;
        view.MinY = drawn.MinY;
        view.MaxX = drawn.MaxX;
        view.MaxY = drawn.MaxY;
        window_.ReDraw();
    }
    window_.lblComment()->setText(QStringLiteral("  Opened again after a change on disk: ") +
                                  QString::fromStdString(window_.FileName()));
}

bool ExternalOpens::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto* drag = static_cast<QDragMoveEvent*>(event);
        if (LocalFiles(drag->mimeData()).isEmpty())
            return false;
        drag->acceptProposedAction();
        return true;
    }
    case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        const QStringList files = LocalFiles(drop->mimeData());
        if (files.isEmpty())
            return false;
        drop->acceptProposedAction();
        // The drop's source waits for this event to end: the open runs after it.
        QTimer::singleShot(0, this, [this, files] { Open(files.front(), int(files.size()) - 1); });
        return true;
    }
    default:
        return QObject::eventFilter(watched, event);
    }
}

} // namespace backplot
