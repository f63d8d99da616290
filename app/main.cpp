#include "ExternalOpens.h"
#include "InstanceChannel.h"
#include "InstanceLock.h"
#include "SettingsStore.h"
#include "StartArguments.h"
#include "frmBackplot.h"

#include <QApplication>
#include <QDir>
#include <cstdio>

int main(int argc, char** argv)
{
    // The command line first: --help, --version and a wrong option need no display, and
    // are answered even while another copy runs.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const backplot::StartArguments start = backplot::StartArguments::Parse(arguments, QDir::currentPath());
    switch (start.What) {
    case backplot::StartArguments::Kind::Help:
    case backplot::StartArguments::Kind::Version:
        std::fputs(qPrintable(start.Text), stdout);
        return 0;
    case backplot::StartArguments::Kind::UsageError:
        std::fprintf(stderr, "backplot: %s\nTry 'backplot --help'.\n", qPrintable(start.Text));
        return 2;
    case backplot::StartArguments::Kind::Open:
        break;
    }

    QApplication app(argc, argv);
    // These name the per-user data folder. No display name is set: the platform would
    // append it to every window title that does not already end with it, and each title
    // must read exactly as given ("Corvane Backplot", "Open File", ...).
    QCoreApplication::setOrganizationName(QString::fromLatin1(backplot::SettingsOrganization));
    QCoreApplication::setApplicationName(QString::fromLatin1(backplot::SettingsApplication));
    // Ties the windows to the installed menu entry (and its icon) on Wayland desktops.
    QGuiApplication::setDesktopFileName(QStringLiteral("tarvo-backplot"));

    // A second copy ends at once, without a word. It hands its program file, if it names
    // one, to the first, which opens it; without one the first is left alone.
    backplot::InstanceLock lock(backplot::InstanceLock::DefaultPath());
    if (!lock.TryAcquire()) {
        if (!start.ProgramPath.isEmpty())
            backplot::InstanceChannel::Send(backplot::InstanceChannel::DefaultName(), start.ProgramPath,
                                            backplot::InstanceChannel::OwnActivationToken());
        return 0;
    }
    backplot::InstanceChannel channel(backplot::InstanceChannel::DefaultName());
    channel.Listen();

    // The window opens where it was left (or fitted to the screen), as it reads its settings.
    backplot::frmBackplot window;
    window.show();
    start.OpenWhenShown(window);
    QObject::connect(&channel, &backplot::InstanceChannel::OpenRequested, &window.externalOpens(),
                     &backplot::ExternalOpens::OpenHandedOver);
    return app.exec();
}
