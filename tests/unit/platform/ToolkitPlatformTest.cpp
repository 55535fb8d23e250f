#include "platform/linux/desktop/ToolkitPlatform.h"

#include "DesktopFolderTest.h"

namespace quillmender {
namespace {

class ToolkitPlatformTest : public DesktopFolderTest {
  protected:
    QByteArray chosen(const char *platform, const char *display) {
        set("QT_QPA_PLATFORM", QLatin1String(platform));
        set("WAYLAND_DISPLAY", QLatin1String(display));
        chooseToolkitPlatform();
        return qgetenv("QT_QPA_PLATFORM");
    }
};

TEST_F(ToolkitPlatformTest, AWaylandSessionIsSpokenToInItsOwnLanguage) {
    EXPECT_EQ(chosen("", "wayland-0"), "wayland;xcb");
    forgetToolkitPlatform();
    EXPECT_FALSE(qEnvironmentVariableIsSet("QT_QPA_PLATFORM"));
}

TEST_F(ToolkitPlatformTest, AnotherSessionIsLeftToTheToolkit) {
    EXPECT_EQ(chosen("", ""), "");
}

TEST_F(ToolkitPlatformTest, TheUsersChoiceStays) {
    EXPECT_EQ(chosen("xcb", "wayland-0"), "xcb");
    forgetToolkitPlatform();
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), "xcb");
}

} // namespace
} // namespace quillmender
