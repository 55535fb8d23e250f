#include "desktop/presence/PresenceFixture.h"
#include "desktop/sessions/SettingsForm.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gmock/gmock.h>

#include <csignal>
#include <sys/resource.h>

namespace quillmender {
namespace {

using harness::ChildProcess;
using harness::waitUntil;

const QString busName = QStringLiteral("com.quillmender.Quillmender");

QByteArray contents(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The program as the system sees its process. It runs in a folder of its own.
class ProcessTest : public PresenceFixture {
  protected:
    ChildProcess &start(const QMap<QString, QString> &environment = {}) {
        harness::Command command = desktop().command(harness::ProductProcess::path());
        command.workingDirectory = folder_.path();
        for (auto each = environment.cbegin(); each != environment.cend(); ++each)
            command.environment.insert(each.key(), each.value());
        process_ = std::make_unique<ChildProcess>(command);
        desktop().sessionBus().waitForOwner(busName);
        return *process_;
    }

    QStringList filesInItsFolder() const {
        return QDir(folder_.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    QByteArray ofProcess(const char *file) const {
        return contents(
            QStringLiteral("/proc/%1/%2").arg(process_->pid()).arg(QLatin1String(file)));
    }

    void TearDown() override {
        process_.reset();
        PresenceFixture::TearDown();
    }

  private:
    QTemporaryDir folder_;
    std::unique_ptr<ChildProcess> process_;
};

/// On a system where a session lets its programs write core files.
class CoreTest : public ProcessTest {
  protected:
    void SetUp() override {
        ASSERT_EQ(::getrlimit(RLIMIT_CORE, &before_), 0);
        if (before_.rlim_max == 0)
            GTEST_SKIP() << "nothing on this system may write core files";
        const rlimit wanted{.rlim_cur = before_.rlim_max, .rlim_max = before_.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_CORE, &wanted), 0);
        ProcessTest::SetUp();
    }
    void TearDown() override {
        ProcessTest::TearDown();
        EXPECT_EQ(::setrlimit(RLIMIT_CORE, &before_), 0);
    }

  private:
    rlimit before_{};
};

TEST_F(CoreTest, ACrashLeavesNoCoreFile) {
    ChildProcess &program = start();
    const auto limit = QRegularExpression(QStringLiteral("Max core file size +(\\S+) +(\\S+)"))
                           .match(QString::fromLatin1(ofProcess("limits")));
    ASSERT_TRUE(limit.hasMatch());
    EXPECT_EQ(limit.captured(1), QStringLiteral("0"));
    EXPECT_NE(limit.captured(2), QStringLiteral("0")) << "the user may still raise it";
    // What the kernel would hand to a program that collects cores, whatever the limit is.
    EXPECT_EQ(ofProcess("coredump_filter").toUInt(nullptr, 16), 0U);

    ASSERT_EQ(::kill(static_cast<pid_t>(program.pid()), SIGSEGV), 0);
    waitUntil([&] { return !program.isRunning(); }, QStringLiteral("the program has crashed"));
    if (const QByteArray pattern = contents(QStringLiteral("/proc/sys/kernel/core_pattern"));
        pattern.startsWith('/') || pattern.startsWith('|'))
        GTEST_SKIP() << "core files would go to " << pattern.toStdString();
    EXPECT_EQ(filesInItsFolder(), QStringList());
}

TEST_F(ProcessTest, FoldersThatAreNotAbsoluteCountAsUnset) {
    const QString relative = QStringLiteral("relative");
    const qint64 pid =
        start({{QStringLiteral("XDG_CONFIG_HOME"), relative},
               {QStringLiteral("XDG_DATA_HOME"), QStringLiteral("./") + relative},
               {QStringLiteral("XDG_CACHE_HOME"), relative},
               {QStringLiteral("XDG_STATE_HOME"), relative},
               {QStringLiteral("XDG_RUNTIME_DIR"), relative},
               {QStringLiteral("XDG_CONFIG_DIRS"), relative + QStringLiteral(":~/x")},
               {QStringLiteral("XDG_DATA_DIRS"), relative + QStringLiteral("::..")}})
            .pid();
    run(QStringLiteral("gapplication"),
        {QStringLiteral("action"), busName, QStringLiteral("settings")});
    SettingsForm(desktop(), pid).fill("OpenAI Model", QStringLiteral("typed-model"));
    const QString settings =
        desktop().folders().home() + QStringLiteral("/.config/quillmender/quillmender.conf");
    waitUntil([&] { return contents(settings).contains("typed-model"); },
              QStringLiteral("the settings are written below the home folder"));
    EXPECT_EQ(filesInItsFolder(), QStringList());
}

} // namespace
} // namespace quillmender
