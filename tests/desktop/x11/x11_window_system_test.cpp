#include "desktop/x11/XServerProcess.h"
#include "platform/linux/WindowSystemServices.h"
#include "platform/none/NoneChords.h"
#include "platform/none/NoneHotKeys.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <gmock/gmock.h>

namespace quillmender::x11 {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr Capability everything[] = {Capability::sourceApplications, Capability::clipboard,
                                     Capability::chords, Capability::hotKeys, Capability::panel};

/// What was written to the log since it was made.
class LogLines {
  public:
    LogLines() {
        lines().clear();
        QLoggingCategory::setFilterRules(QStringLiteral("quillmender.platform=true"));
        before_ = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &message) {
                lines().push_back(message.toStdString());
            });
    }
    ~LogLines() {
        qInstallMessageHandler(before_);
        QLoggingCategory::setFilterRules({});
    }
    LogLines(const LogLines &) = delete;
    LogLines &operator=(const LogLines &) = delete;

    static std::vector<std::string> &lines() {
        static std::vector<std::string> written;
        return written;
    }

  private:
    QtMessageHandler before_;
};

WindowSystemServices choose(const char *toolkitPlatform, const QByteArray &display) {
    qputenv("DISPLAY", display);
    return chooseWindowSystem(QLatin1String(toolkitPlatform),
                              {.windowIcon = [] { return QIcon(); }, .findProcess = {}});
}

void expectComplete(const WindowSystemServices &services) {
    EXPECT_TRUE(services.workspace && services.pasteboard && services.chords && services.hotKeys &&
                services.ownWindows && services.frontmost);
    for (const Capability capability : everything)
        EXPECT_NE(services.backends.contains(capability), services.missing.contains(capability))
            << int(capability);
}

bool canTypeChords(const WindowSystemServices &services) {
    return dynamic_cast<NoneChords *>(services.chords.get()) == nullptr;
}

bool holdsHotKeys(const WindowSystemServices &services) {
    return dynamic_cast<NoneHotKeys *>(services.hotKeys.get()) == nullptr;
}

TEST(WindowSystemTest, AToolkitThatSpeaksToAnXServerHasItsServices) {
    const XServerProcess server;
    const WindowSystemServices services = choose("xcb", server.display());
    EXPECT_EQ(services.name, QStringLiteral("X11"));
    EXPECT_EQ(services.missing, MissingCapabilities());
    expectComplete(services);
    EXPECT_TRUE(canTypeChords(services));
    EXPECT_TRUE(holdsHotKeys(services));
    EXPECT_TRUE(services.tray);
    EXPECT_EQ(services.ownWindows->stepAside(nullptr), nullptr) << "no need for it";
}

TEST(WindowSystemTest, AnXServerThatAnswersBesidesIsNotTheSessions) {
    const XServerProcess server;
    for (const char *platform : {"linuxfb", "offscreen", ""}) {
        const WindowSystemServices services = choose(platform, server.display());
        EXPECT_EQ(services.name, QString()) << platform;
        expectComplete(services);
        EXPECT_FALSE(canTypeChords(services)) << platform;
        EXPECT_FALSE(holdsHotKeys(services)) << platform;
        EXPECT_FALSE(services.tray) << platform;
        for (const Capability capability : everything)
            EXPECT_TRUE(services.missing[capability].sentence.endsWith(u'.'))
                << "a sentence for the user";
    }
}

TEST(WindowSystemTest, WithoutItsServerEverythingIsMissing) {
    const WindowSystemServices services = choose("xcb", ":no-such-display");
    expectComplete(services);
    EXPECT_EQ(services.missing.size(), std::size(everything));
}

TEST(WindowSystemTest, WithoutItsCompositorEverythingIsMissing) {
    qputenv("WAYLAND_DISPLAY", "/nowhere/wayland-7");
    const WindowSystemServices services = choose("wayland", "");
    qunsetenv("WAYLAND_DISPLAY");
    expectComplete(services);
    EXPECT_EQ(services.name, QStringLiteral("Wayland"));
    EXPECT_EQ(services.missing.size(), std::size(everything));
}

TEST(WindowSystemTest, BesideACompositorAnXServerDoesNotKnowWhatIsInFront) {
    const XServerProcess server;
    qputenv("WAYLAND_DISPLAY", "wayland-7");
    const WindowSystemServices services = choose("xcb", server.display());
    qunsetenv("WAYLAND_DISPLAY");
    expectComplete(services);
    EXPECT_EQ(services.missing.keys(), QList<Capability>{Capability::sourceApplications});
    EXPECT_THAT(services.missing[Capability::sourceApplications].sentence.toStdString(),
                HasSubstr("qt6-wayland"));
}

TEST(WindowSystemTest, WhatOneServerLacksIsMissingAlone) {
    const XServerProcess server({QStringLiteral("-extension"), QStringLiteral("XTEST")});
    const WindowSystemServices services = choose("xcb", server.display());
    expectComplete(services);
    EXPECT_EQ(services.missing.keys(), QList<Capability>{Capability::chords});
    EXPECT_THAT(services.missing[Capability::chords].sentence.toStdString(), HasSubstr("XTest"));
    EXPECT_FALSE(canTypeChords(services));
    EXPECT_TRUE(holdsHotKeys(services));
}

TEST(WindowSystemTest, EachCapabilityHasItsLineInTheLog) {
    const XServerProcess server;
    const LogLines log;
    choose("xcb", server.display());
    EXPECT_THAT(LogLines::lines(), ElementsAre("window system: X11, since the toolkit speaks xcb",
                                               "source applications: EWMH, else the input focus",
                                               "clipboard: selections and XFixes", "chords: XTest",
                                               "hot keys: passive grabs", "panel: EWMH"));
    LogLines::lines().clear();
    choose("linuxfb", server.display());
    EXPECT_THAT(LogLines::lines(),
                ElementsAre("window system: none, since the toolkit speaks linuxfb",
                            StartsWith("source applications: none. Quillmender cannot"),
                            StartsWith("clipboard: none. "), StartsWith("chords: none. "),
                            StartsWith("hot keys: none. "), StartsWith("panel: none. ")));
}

} // namespace
} // namespace quillmender::x11

int main(int argc, char **argv) {
    testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
