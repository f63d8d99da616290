#include "InstanceChannel.h"
#include "InstanceLock.h"
#include "ProgramWatcher.h"
#include "TestPaths.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace backplot {
namespace {

// This process is the copy that runs (it holds the lock and listens); the real program,
// started in a scratch runtime folder, is the later start. No window is needed on either side.
// A crashed copy's socket and a later start without a file: e2e/open_with.py.
TEST(InstanceChannel, ALaterStartHandsItsFileToTheRunningCopyAndEndsSilently)
{
    test::ScratchDir runtime;
    const QString folder = QString::fromStdString(runtime.Path().string());
    QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    InstanceLock lock(folder + "/tarvo-backplot.lock");
    ASSERT_TRUE(lock.TryAcquire());
    InstanceChannel channel(folder + "/tarvo-backplot.socket");
    ASSERT_TRUE(channel.Listen());
    QSignalSpy requests(&channel, &InstanceChannel::OpenRequested);

    const auto start = [&](const QStringList& arguments, const QString& token) {
        QProcess later;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("XDG_RUNTIME_DIR", folder);
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.remove("DESKTOP_STARTUP_ID");
        env.remove("XDG_ACTIVATION_TOKEN");
        if (!token.isEmpty())
            env.insert("XDG_ACTIVATION_TOKEN", token);
        later.setProcessEnvironment(env);
        later.setWorkingDirectory(folder);
        later.start(QStringLiteral(BACKPLOT_PROGRAM_DIR "/backplot"), arguments);
        // The running copy answers from its event loop while the later one waits.
        EXPECT_TRUE(QTest::qWaitFor([&] { return later.state() == QProcess::NotRunning; }, 20000));
        EXPECT_EQ(later.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(later.exitCode(), 0);
        EXPECT_EQ(later.readAllStandardOutput() + later.readAllStandardError(), QByteArray());
    };

    // A relative name is the later start's own folder's; a name with blanks, a tab and
    // a character outside ASCII arrives whole.
    start({"part.nc"}, "");
    start({"--", "-odd\tname ø.nc"}, "token-42");
    ASSERT_EQ(requests.size(), 2);
    EXPECT_EQ(requests[0], (QVariantList{folder + "/part.nc", QString()}));
    EXPECT_EQ(requests[1], (QVariantList{folder + "/-odd\tname ø.nc", "token-42"}));
}

// Writers save in steps; each settled change is told once, a rename over the file too.
TEST(ProgramWatcher, OneChangeIsToldOnceTheWritingHasSettled)
{
    test::ScratchDir dir;
    const QString path = QString::fromStdString(dir.Write("part.nc", "G0 X1.\n"));
    const QString other = QString::fromStdString(dir.Write("other.nc", "G0 X2.\n"));
    ProgramWatcher watcher(150);
    QSignalSpy changes(&watcher, &ProgramWatcher::Changed);
    watcher.Follow(path);
    const auto write = [](const QString& file, const QByteArray& bytes) {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
        out.write(bytes);
    };

    write(path, ""); // truncated, then written in pieces
    QTest::qWait(40);
    write(path, "G0 X1.\nG1 X5.\n");
    QTest::qWait(40);
    write(path, "G0 X1.\nG1 X5.\nG1 Y5.\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes.size() > 0; }, 3000));
    QTest::qWait(400);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toString(), path);

    // A copy written beside it and renamed over it; the file is still followed after.
    write(path + ".tmp", "G0 X3.\nG1 X8. Y2.\n");
    ASSERT_TRUE(QFile::remove(path) && QFile::rename(path + ".tmp", path));
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes.size() == 2; }, 3000));
    write(path, "G0 X4.\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes.size() == 3; }, 3000));

    // Gone, and left empty: nothing to open yet. Other files of the folder are not it.
    ASSERT_TRUE(QFile::remove(path));
    write(other, "G0 X9.\n");
    QTest::qWait(400);
    write(path, "");
    QTest::qWait(400);
    EXPECT_EQ(changes.size(), 3);

    // Following another file ends the first one's watch.
    watcher.Follow(other);
    write(path, "G0 X5.\n");
    QTest::qWait(400);
    EXPECT_EQ(changes.size(), 3);
}

} // namespace
} // namespace backplot
