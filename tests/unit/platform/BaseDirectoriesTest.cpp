#include "platform/linux/desktop/BaseDirectories.h"

#include "DesktopFolderTest.h"

namespace quillmender {
namespace {

class BaseDirectoriesTest : public DesktopFolderTest {};

constexpr const char *folders[] = {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME",
                                   "XDG_STATE_HOME", "XDG_RUNTIME_DIR"};
constexpr const char *lists[] = {"XDG_CONFIG_DIRS", "XDG_DATA_DIRS"};

TEST_F(BaseDirectoriesTest, AFolderThatIsNotAbsoluteIsUnset) {
    for (const char *variable : folders) {
        for (const char *relative :
             {"", "config", "./config", "../config", "~/.config", " /config"}) {
            set(variable, QLatin1String(relative));
            unsetRelativeBaseDirectories();
            EXPECT_FALSE(qEnvironmentVariableIsSet(variable)) << variable << "=" << relative;
        }
        for (const char *absolute : {"/", "/a b/../c", "/a:b"}) {
            set(variable, QLatin1String(absolute));
            unsetRelativeBaseDirectories();
            EXPECT_EQ(qgetenv(variable), absolute) << variable;
        }
    }
}

TEST_F(BaseDirectoriesTest, OfAListTheAbsoluteFoldersStayInTheirOrder) {
    for (const char *variable : lists) {
        for (const char *relative : {"", ":", "a", "a:./b::~/c"}) {
            set(variable, QLatin1String(relative));
            unsetRelativeBaseDirectories();
            EXPECT_FALSE(qEnvironmentVariableIsSet(variable)) << variable << "=" << relative;
        }
        const std::pair<const char *, const char *> values[] = {
            {"/b:/a", "/b:/a"}, {"a:/b/:c:/a:", "/b/:/a"}, {":/b", "/b"}};
        for (const auto &[given, kept] : values) {
            set(variable, QLatin1String(given));
            unsetRelativeBaseDirectories();
            EXPECT_EQ(qgetenv(variable), kept) << variable << "=" << given;
        }
    }
}

TEST_F(BaseDirectoriesTest, OtherVariablesStay) {
    set("XDG_CURRENT_DESKTOP", QStringLiteral("GNOME"));
    set("XDG_SESSION_TYPE", QStringLiteral("x11"));
    unsetRelativeBaseDirectories();
    EXPECT_EQ(qgetenv("XDG_CURRENT_DESKTOP"), "GNOME");
    EXPECT_EQ(qgetenv("XDG_SESSION_TYPE"), "x11");
}

} // namespace
} // namespace quillmender
