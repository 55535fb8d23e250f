#include "platform/linux/desktop/CoreFiles.h"

#include "DesktopFolderTest.h"
#include "platform/linux/desktop/DetachedProgram.h"

#include <sys/resource.h>

namespace quillmender {
namespace {

rlimit coreLimit() {
    rlimit limit{};
    EXPECT_EQ(::getrlimit(RLIMIT_CORE, &limit), 0);
    return limit;
}

/// What the process had before is there again afterwards.
class CoreFilesTest : public DesktopFolderTest {
  protected:
    CoreFilesTest() : limit_(coreLimit()), filter_(filter()) {}
    ~CoreFilesTest() override {
        EXPECT_EQ(::setrlimit(RLIMIT_CORE, &limit_), 0);
        setFilter("0x" + filter_.trimmed());
    }

    static QByteArray filter() {
        QFile file(QStringLiteral("/proc/self/coredump_filter"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static void setFilter(const QByteArray &value) {
        QFile file(QStringLiteral("/proc/self/coredump_filter"));
        if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            file.write(value);
    }

    static void setSoftLimit(rlim_t soft) {
        rlimit limit = coreLimit();
        limit.rlim_cur = soft;
        ASSERT_EQ(::setrlimit(RLIMIT_CORE, &limit), 0);
    }

  private:
    rlimit limit_;
    QByteArray filter_;
};

TEST_F(CoreFilesTest, OnlyAProgramThatIsStartedHasTheLimitOfTheSession) {
    const rlimit before = coreLimit();
    constexpr rlim_t wanted = 1024UL * 1024;
    if (before.rlim_max < wanted)
        GTEST_SKIP() << "nothing on this system may write core files";
    setSoftLimit(wanted);
    setFilter("0x31");
    const QString program =
        write(QStringLiteral("bin/program"),
              "#!/bin/sh\nulimit -S -c > \"$0.new\"\nwhile read -r line; do echo \"$line\"; done "
              "< /proc/$$/coredump_filter >> \"$0.new\"\n/bin/mv \"$0.new\" \"$0.limits\"\n");
    ASSERT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));

    forbidCoreFiles();
    EXPECT_EQ(coreLimit().rlim_cur, 0U);
    EXPECT_EQ(coreLimit().rlim_max, before.rlim_max) << "the user may still raise it";
    EXPECT_EQ(filter().toUInt(nullptr, 16), 0U);
    // Once more is not the session's limit.
    forbidCoreFiles();

    ASSERT_TRUE(startDetached({program}));
    EXPECT_EQ(coreLimit().rlim_cur, 0U);
    EXPECT_EQ(filter().toUInt(nullptr, 16), 0U);
    const QString record = QStringLiteral("bin/program.limits");
    ASSERT_TRUE(waitForFile(record));
    // The shell counts in blocks of 512 bytes.
    EXPECT_EQ(read(record), "2048\n00000031\n");
}

} // namespace
} // namespace quillmender
