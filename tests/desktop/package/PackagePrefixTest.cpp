#include "desktop/harness/DesktopTest.h"
#include "desktop/package/Tool.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QTemporaryDir>

#include <filesystem>
#include <optional>

namespace quillmender {
namespace {

using harness::ChildProcess;
using harness::waitUntil;

const QString id = QStringLiteral("com.quillmender.Quillmender");

/// The build, installed into a folder with everything in its name that paths may have. (CMake
/// itself cannot install below a backslash.)
class PackagePrefixTest : public harness::DesktopTest {
  protected:
    void SetUp() override {
        requireTool(QStringLiteral(QUILLMENDER_CMAKE),
                    {QStringLiteral("--install"), QStringLiteral(QUILLMENDER_BUILD),
                     QStringLiteral("--prefix"), prefix_});
        DesktopTest::SetUp();
    }

    QString installed(const QString &file) const { return prefix_ + u'/' + file; }

    void launch(const QString &entry) {
        launcher_.emplace(desktop().command(QStringLiteral("gio"), {"launch", entry}));
        waitUntil([&] { return !launcher_->isRunning(); }, QStringLiteral("gio has launched it"));
        ASSERT_EQ(launcher_->exitCode(), 0) << launcher_->log().toStdString();
        desktop().sessionBus().waitForOwner(id);
    }

    std::string runningProgram() {
        const uint pid = desktop().sessionBus().connection().interface()->servicePid(id);
        return std::filesystem::read_symlink("/proc/" + std::to_string(pid) + "/exe").string();
    }

    void quit() {
        QDBusMessage call = QDBusMessage::createMethodCall(
            id, QStringLiteral("/com/quillmender/Quillmender"),
            QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
        call.setArguments({QStringLiteral("quit"), QVariantList(), QVariantMap()});
        desktop().sessionBus().connection().call(call, QDBus::NoBlock);
        waitUntil([this] { return !desktop().sessionBus().hasOwner(id); },
                  QStringLiteral("the program has ended"));
    }

    void TearDown() override {
        launcher_.reset();
        DesktopTest::TearDown();
    }

  private:
    /// What it has launched ends with it.
    std::optional<ChildProcess> launcher_;
    const QTemporaryDir folder_;
    const QString prefix_ =
        folder_.filePath(QStringLiteral("50%u % \"a\" $HOME `b` it's (c); <d> & #e ~ * ?|größe"));
};

TEST_F(PackagePrefixTest, IsStartedByTheBusAndByItsEntry) {
    const QString program = installed(QStringLiteral("bin/quillmender"));
    const QString entry = installed(QStringLiteral("share/applications/%1.desktop").arg(id));
    startDesktop(
        {.services = {installed(QStringLiteral("share/dbus-1/services/%1.service").arg(id))}});
    const QDBusReply<void> started =
        desktop().sessionBus().connection().interface()->startService(id);
    ASSERT_TRUE(started.isValid()) << started.error().message().toStdString();
    EXPECT_EQ(runningProgram(), program.toStdString());
    quit();

    launch(entry);
    EXPECT_EQ(runningProgram(), program.toStdString());
    quit();
}

} // namespace
} // namespace quillmender
