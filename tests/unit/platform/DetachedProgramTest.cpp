#include "platform/linux/desktop/DetachedProgram.h"

#include "DesktopFolderTest.h"

#include <sys/wait.h>
#include <unistd.h>

namespace quillmender {
namespace {

class DetachedProgramTest : public DesktopFolderTest {};

TEST_F(DetachedProgramTest, IsNobodysChildAndInASessionOfItsOwn) {
    // Its process, parent, group and session, in its own working folder.
    const QString program =
        write(QStringLiteral("bin/program"),
              "#!/bin/sh\nread -r line < /proc/$$/stat\necho \"$PWD|$1|$line\" > \"$0.new\"\n"
              "/bin/mv \"$0.new\" \"$0.stat\"\n");
    ASSERT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    ASSERT_TRUE(startDetached({program, QStringLiteral("a $b 'c'")}));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "no child is left to be waited for";

    const QString record = QStringLiteral("bin/program.stat");
    ASSERT_TRUE(waitForFile(record));
    const QByteArrayList parts = read(record).trimmed().split('|');
    ASSERT_EQ(parts.size(), 3);
    EXPECT_EQ(QString::fromUtf8(parts[0]), QDir(path(QStringLiteral("home"))).canonicalPath());
    EXPECT_EQ(parts[1], "a $b 'c'");
    const QByteArrayList stat = parts[2].mid(parts[2].lastIndexOf(')') + 2).split(' ');
    EXPECT_NE(stat.value(1).toInt(), ::getpid());
    EXPECT_NE(stat.value(3).toInt(), ::getsid(0));
}

TEST_F(DetachedProgramTest, WhatCannotBeExecutedIsNotStarted) {
    EXPECT_FALSE(startDetached({}));
    EXPECT_FALSE(startDetached({path(QStringLiteral("bin/none"))}));
    EXPECT_FALSE(startDetached({write(QStringLiteral("bin/data"), "not executable")}));
}

} // namespace
} // namespace quillmender
