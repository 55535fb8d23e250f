#include "platform/linux/wayland/sway/SwayConfig.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace quillmender::sway {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SwayConfigTest : public testing::Test {
  protected:
    QString path(const char *name) const { return folder_.filePath(QString::fromUtf8(name)); }

    void write(const char *name, const QByteArray &text) {
        QDir().mkpath(QFileInfo(path(name)).absolutePath());
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QStringList lines(const char *text) const {
        return configurationLines(QString::fromUtf8(text), path("config"));
    }

    QTemporaryDir folder_;
};

TEST_F(SwayConfigTest, LeavesCommentsAndEmptyLinesOut) {
    EXPECT_THAT(lines("# bindsym a b\n\n  \t font  mono \n  # c"),
                ElementsAre(QStringLiteral("font mono")));
}

TEST_F(SwayConfigTest, JoinsContinuedLines) {
    EXPECT_THAT(lines("bindsym \\\n  Ctrl+Alt+space \\\n exec foot"),
                ElementsAre(QStringLiteral("bindsym Ctrl+Alt+space exec foot")));
    EXPECT_THAT(lines("font mono\\"), ElementsAre(QStringLiteral("font mono")));
}

TEST_F(SwayConfigTest, PutsValuesForVariables) {
    EXPECT_THAT(
        lines("set $mod Ctrl+Mod1\nset $modifier Mod4\nset $key $mod+space\n"
              "bindsym $key exec $mod $modifier $unknown"),
        ElementsAre(QStringLiteral("bindsym Ctrl+Mod1+space exec Ctrl+Mod1 Mod4 $unknown")));
    EXPECT_THAT(lines("set $a $a$a\nset $a $a$a\nbindsym $a b"),
                ElementsAre(QStringLiteral("bindsym $a$a$a$a b")));
}

TEST_F(SwayConfigTest, ReadsWhatIsIncluded) {
    write("config.d/one", "bindsym $mod+space exec one");
    write("config.d/two", "include ../further/*");
    write("further/three.conf", "bindsym three exec three");
    qputenv("QUILLMENDER_TEST_FOLDER", folder_.path().toUtf8());
    const QStringList wanted{QStringLiteral("bindsym Mod1+space exec one"),
                             QStringLiteral("bindsym three exec three")};
    EXPECT_EQ(lines("set $mod Mod1\ninclude config.d/*"), wanted);
    EXPECT_EQ(lines("set $mod Mod1\ninclude $QUILLMENDER_TEST_FOLDER/config.d/*"), wanted);
    EXPECT_EQ(lines("set $mod Mod1\ninclude \"config.d/*\""), wanted);
}

TEST_F(SwayConfigTest, IsNotCaughtInACircle) {
    write("circle", "include circle\nfont mono\ninclude config");
    write("config", "include circle");
    EXPECT_THAT(lines("include circle"), ElementsAre(QStringLiteral("font mono")));
}

TEST_F(SwayConfigTest, RunsNothing) {
    EXPECT_THAT(lines(qPrintable(QStringLiteral("include $(touch %1)").arg(path("ran")))),
                IsEmpty());
    EXPECT_FALSE(QFile::exists(path("ran")));
    EXPECT_THAT(lines("include `true`\ninclude \"\ninclude\ninclude /nowhere/at/all"), IsEmpty());
}

} // namespace

} // namespace quillmender::sway
