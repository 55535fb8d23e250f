#include "desktop/harness/TestApplication.h"
#include "desktop/harness/wayland/WaylandClipboardProbe.h"
#include "desktop/harness/wayland/WaylandDesktopTest.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <unistd.h>

namespace quillmender::harness {
namespace {

class WaylandServicesTest : public EachCompositorTest {};

TEST_P(WaylandServicesTest, NothingRunsAsRootNorLooksIntoTheRuntimeFolder) {
    constexpr QFile::Permissions othersToo(0x7077);
    EXPECT_NE(::geteuid(), 0U);
    const QFileInfo runtime(desktop().folders().runtime());
    EXPECT_EQ(runtime.ownerId(), ::geteuid());
    EXPECT_EQ(runtime.permissions() & othersToo,
              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QFileInfo process(QStringLiteral("/proc/%1").arg(desktop().compositor().process().pid()));
    EXPECT_EQ(process.ownerId(), ::geteuid());
}

TEST_P(WaylandServicesTest, DesktopsAreSeparate) {
    WaylandDesktop other({.kind = GetParam()});
    EXPECT_NE(desktop().socketPath(), other.socketPath());
    EXPECT_NE(desktop().sessionBus().address(), other.sessionBus().address());
    EXPECT_NE(desktop().accessibilityBus()->address(), other.accessibilityBus()->address());
    desktop().keyring()->store(QStringLiteral("s"), QStringLiteral("a"), "here only");
    EXPECT_EQ(other.keyring()->lookup(QStringLiteral("s"), QStringLiteral("a")), "");

    const auto here = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
    const auto there = TestApplication::sampleEditor(other, QStringLiteral("plain"));
    EXPECT_EQ(desktop().windows().all().size(), 1);
    EXPECT_EQ(other.windows().all().size(), 1);
    const Accessible textHere = here.focusedText();
    const Accessible textThere = there.focusedText();
    desktop().input().type(QStringLiteral("here"));
    other.input().type(QStringLiteral("there"));
    waitUntil([&] { return textHere.text() == QStringLiteral("here"); },
              QStringLiteral("the first desktop has its text"));
    waitUntil([&] { return textThere.text() == QStringLiteral("there"); },
              QStringLiteral("the second desktop has its text"));
    const auto owner = desktop().ownClipboard({{"a/b", "a/b", 8, "bytes"}});
    EXPECT_TRUE(WaylandClipboardProbe(other.socketPath()).isEmpty());
}

TEST_P(WaylandServicesTest, DesktopCanBeWithoutThem) {
    startDesktop({.accessibilityBus = false, .keyring = false});
    EXPECT_EQ(desktop().accessibilityBus(), nullptr);
    EXPECT_EQ(desktop().keyring(), nullptr);
    EXPECT_FALSE(desktop().sessionBus().hasOwner(QStringLiteral("org.a11y.Bus")));
    EXPECT_FALSE(desktop().sessionBus().hasOwner(QStringLiteral("org.freedesktop.secrets")));
}

TEST_P(WaylandServicesTest, ArtifactsHaveAPictureAndEveryLog) {
    const QTemporaryDir folder;
    auto editor = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
    desktop().keepArtifacts(folder.path());
    const QImage picture(folder.filePath(QStringLiteral("screen.png")));
    EXPECT_EQ(picture.size(), desktop().compositor().screen());
    for (const char *name :
         {nameOf(GetParam()), "session-bus", "accessibility-bus", "keyring", "sample-editor"})
        EXPECT_TRUE(
            QFile::exists(folder.filePath(QString::fromLatin1(name) + QStringLiteral(".log"))))
            << name;
}

TEST_P(WaylandServicesTest, OlderProgramsFindAnXServerWhereThereIsOne) {
    EXPECT_FALSE(desktop().environment().contains(QStringLiteral("DISPLAY")));
    WaylandDesktop::Options options;
    options.compositor.xwayland = true;
    startDesktop(options);
    const TestApplication xterm = TestApplication::xterm(desktop(), QStringLiteral("text"));
    EXPECT_FALSE(xterm.title().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(On, WaylandServicesTest, everyCompositor(), compositorName);

/// What KWin gives only to programs whose .desktop file asks for it.
class KWinTrustTest : public EachCompositorTest {};

TEST_P(KWinTrustTest, GivesATrustedProgramWhatItsDesktopFileAsksFor) {
    const wl_interface restricted{"org_kde_kwin_fake_input", 1, 0, nullptr, 0, nullptr};
    const auto isOffered = [&] { return WaylandClient(desktop().socketPath()).offers(restricted); };
    EXPECT_FALSE(isOffered());
    const QString file = desktop().folders().home() + QStringLiteral("/trusted.desktop");
    QFile desktopFile(file);
    ASSERT_TRUE(desktopFile.open(QIODevice::WriteOnly));
    desktopFile.write("[Desktop Entry]\nType=Application\nName=Trusted\nTryExec=@NONE@\n"
                      "Exec=@NONE@\nX-KDE-Wayland-Interfaces=org_kde_kwin_fake_input\n");
    desktopFile.close();
    desktop().compositor().trust(QStringLiteral("/proc/self/exe"), file);
    waitUntil(isOffered, QStringLiteral("KWin offers it"));
}

INSTANTIATE_TEST_SUITE_P(On, KWinTrustTest, testing::Values(CompositorKind::kwin), compositorName);

} // namespace
} // namespace quillmender::harness
