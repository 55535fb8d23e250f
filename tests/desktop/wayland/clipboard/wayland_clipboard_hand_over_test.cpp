#include "desktop/wayland/clipboard/ClipboardTest.h"
#include "platform/linux/wayland/clipboard/ClipboardHandover.h"
#include "platform/linux/wayland/clipboard/ContentsFile.h"

#include <QFile>

#include <stdexcept>
#include <sys/wait.h>

namespace quillmender::wayland {

namespace {

using testing::IsEmpty;

class HandOverTest : public ClipboardTest {
  protected:
    void SetUp() override {
        ClipboardTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        qputenv("WAYLAND_DISPLAY", server().display());
        contents_ = {{"text/plain;charset=utf-8", "gr\xc3\xbc\xc3\x9f"},
                     {"text/html", "<b>gr\xc3\xbc\xc3\x9f</b>"},
                     {"image/png", pattern(3'000'000)},
                     {"x-odd name; (private)", QByteArray("\0\1\0", 3)},
                     {"x-empty", ""}};
    }

    void TearDown() override {
        // What a test that failed has left behind ends with that.
        if (other_ && server().isRunning())
            other_->clear();
    }

    /// What the program leaves behind when it ends now.
    void endProgram() {
        QCoro::waitFor(pasteboard().handOver());
        pasteboard_.reset();
        control_.reset();
        connection_.reset();
        other_->settle();
    }

    /// The exit status of a process that has been left behind, of any with -1, once it ends.
    int statusOf(pid_t process) {
        int status = -1;
        EXPECT_TRUE(waitFor([&] { return ::waitpid(process, &status, WNOHANG) > 0; }));
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// Children of this process: the compositor is one.
    static int processes() {
        QFile file(QStringLiteral("/proc/self/task/%1/children").arg(::getpid()));
        return file.open(QIODevice::ReadOnly)
                   ? static_cast<int>(file.readAll().simplified().count(' ')) + 1
                   : 0;
    }

    OfferedContents contents_;
};

TEST_F(HandOverTest, ServesTheSameContentsAfterTheEnd) {
    pasteboard().replaceContents(toPasteboardItems(contents_));
    endProgram();
    QList<QByteArray> names;
    for (const OfferedType &each : contents_)
        names.append(each.name);
    EXPECT_EQ(other_->types(), names);
    for (const OfferedType &each : contents_)
        EXPECT_TRUE(other_->fetch(each.name) == each.data) << each.name.toStdString();
    // With the next copy it ends, and serves who has asked before.
    Descriptor early = other_->ask("image/png");
    other_->settle();
    other_->offer("UTF8_STRING", "next");
    EXPECT_TRUE(readToEnd(std::move(early)) == contents_[2].data);
    EXPECT_EQ(statusOf(-1), EXIT_SUCCESS);
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "next");
}

TEST_F(HandOverTest, ServesVeryLargeContents) {
    const QByteArray large = pattern(qsizetype{100} * 1000 * 1000);
    pasteboard().replaceContents(itemOf(QStringLiteral("image/x-raw"), large));
    endProgram();
    EXPECT_TRUE(other_->fetch("image/x-raw") == large);
    other_->clear();
    EXPECT_EQ(statusOf(-1), EXIT_SUCCESS);
}

TEST_F(HandOverTest, EndsWithTheCompositor) {
    pasteboard().replaceContents(toPasteboardItems(contents_));
    endProgram();
    ASSERT_FALSE(other_->types().isEmpty());
    server().kill();
    EXPECT_EQ(statusOf(-1), EXIT_SUCCESS);
}

TEST_F(HandOverTest, LeavesNothingBehindWithoutContentsOfTheUsers) {
    const int before = processes();
    endProgram();
    EXPECT_EQ(processes(), before);
    SetUp();
    other_->offer("UTF8_STRING", "somebody else's");
    settle();
    pasteboard().replaceContents(wait(pasteboard().items()));
    endProgram();
    EXPECT_EQ(processes(), before);
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "somebody else's");
    SetUp();
    ASSERT_NE(lend(QStringLiteral("lent")), nullptr);
    endProgram();
    EXPECT_EQ(processes(), before);
    EXPECT_THAT(other_->types(), IsEmpty());
}

TEST_F(HandOverTest, LeavesTheClipboardToWhoHasCopiedMeanwhile) {
    pasteboard().replaceContents(toPasteboardItems(contents_));
    settle();
    auto handingOver = pasteboard().handOver();
    other_->offer("UTF8_STRING", "newer");
    QCoro::waitFor(std::move(handingOver));
    EXPECT_EQ(statusOf(-1), EXIT_SUCCESS);
    EXPECT_TRUE(other_->isOwner());
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "newer");
}

TEST_F(HandOverTest, TakesAFreeClipboardWhenTheProgramEndedWithoutAWord) {
    const auto die = []() -> bool { throw std::runtime_error("dies"); };
    EXPECT_ANY_THROW(QCoro::waitFor(handOverClipboard(contents_, die)));
    EXPECT_TRUE(waitFor([&] { return other_->types().size() == contents_.size(); }));
    EXPECT_EQ(other_->fetch("text/html"), contents_[1].data);
    other_->offer("UTF8_STRING", "next");
    EXPECT_EQ(statusOf(-1), EXIT_SUCCESS);
    EXPECT_ANY_THROW(QCoro::waitFor(handOverClipboard(contents_, die)));
    EXPECT_EQ(statusOf(-1), EXIT_SUCCESS);
    EXPECT_TRUE(other_->isOwner()) << "it is not free";
}

TEST_F(HandOverTest, DoesNotWaitForACompositorThatHangs) {
    pasteboard().replaceContents(toPasteboardItems(contents_));
    settle();
    server().stop();
    QCoro::waitFor(pasteboard().handOver());
    server().letGoOn();
    pasteboard_.reset();
    control_.reset();
    connection_.reset();
    // Whether it still came to it or not, it does not stay behind.
    waitFor([&] { return !other_->types().isEmpty(); }, std::chrono::seconds(2));
    other_->offer("UTF8_STRING", "next");
    statusOf(-1);
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "next");
}

TEST(ContentsFileTest, HasWhatWasWritten) {
    const OfferedContents contents{{"one", "1"}, {"none", ""}, {"\xff odd", QByteArray("\0\0", 2)}};
    EXPECT_EQ(readContentsFile(writeContentsFile(contents)), contents);
    EXPECT_EQ(readContentsFile(writeContentsFile({})), OfferedContents());
}

TEST(ContentsFileTest, IsNothingWhenItIsGarbled) {
    EXPECT_EQ(readContentsFile(Descriptor()), std::nullopt);
    const Descriptor file = writeContentsFile({{"type", "data"}});
    ASSERT_EQ(::ftruncate(file.get(), 25), 0);
    EXPECT_EQ(readContentsFile(file), std::nullopt);
    ASSERT_EQ(::ftruncate(file.get(), 3), 0);
    EXPECT_EQ(readContentsFile(file), std::nullopt);
    const Descriptor other = writeContentsFile({{"type", "data"}});
    ASSERT_EQ(::pwrite(other.get(), "????", 4, 0), 4);
    EXPECT_EQ(readContentsFile(other), std::nullopt);
    const Descriptor lying = writeContentsFile({{"type", ""}});
    ASSERT_EQ(::pwrite(lying.get(), "\0\0\0\x70", 4, 4), 4) << "96 bytes too many";
    EXPECT_EQ(readContentsFile(lying), std::nullopt);
}

} // namespace

} // namespace quillmender::wayland

int main(int argc, char **argv) {
    return quillmender::wayland::runClipboardTests(argc, argv);
}
