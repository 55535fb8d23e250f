#include "desktop/wayland/clipboard/ClipboardTest.h"

#include <QTimer>

namespace quillmender::wayland {

namespace {

using namespace std::chrono_literals;

class ClipboardTextTest : public ClipboardTest {
  protected:
    std::optional<QString> stringOf(const QByteArray &type, const QByteArray &data) {
        other_->offer(type, data);
        return wait(pasteboard().string());
    }
};

TEST_F(ClipboardTextTest, PrefersUtf8AndFallsBackToLatin1) {
    EXPECT_EQ(stringOf("STRING", "caf\xe9"), QStringLiteral("café"));
    EXPECT_EQ(stringOf("text/plain", "caf\xc3\xa9"), QStringLiteral("café"));
    EXPECT_EQ(stringOf("text/plain; charset=UTF-8", "\xe2\x82\xac"), QStringLiteral("€"));
    EXPECT_EQ(stringOf("image/png", "pixels"), std::nullopt);
    other_->declare("STRING", "worst");
    other_->declare("text/plain", "better");
    other_->declare("text/plain;charset=utf-8", "best");
    other_->own();
    EXPECT_EQ(wait(pasteboard().string()), QStringLiteral("best"));
}

TEST_F(ClipboardTextTest, TakesTheNextTypeWhenTheBestIsRefused) {
    other_->declareSpecially("text/plain;charset=utf-8", [](Descriptor) {});
    other_->declare("UTF8_STRING", "text");
    other_->own();
    EXPECT_EQ(wait(pasteboard().string()), QStringLiteral("text"));
}

TEST_F(ClipboardTextTest, JoinsSurrogatesThatWereEncodedOneByOne) {
    EXPECT_EQ(
        stringOf("UTF8_STRING", "a \xed\xa0\xbd\xed\xb8\x80\xed\xa0\xbd\xed\xb2\xa9 \xed\x95\x9c"),
        QStringLiteral("a \U0001F600\U0001F4A9 \uD55C"));
    // What has no other half is no character.
    const auto broken = stringOf("UTF8_STRING", "b \xed\xa0\xbd c \xed\xa0");
    ASSERT_TRUE(broken);
    EXPECT_TRUE(broken->isValidUtf16());
    EXPECT_TRUE(broken->startsWith(QStringLiteral("b \uFFFD")));
}

TEST_F(ClipboardTextTest, TakesWhatAPasswordFieldShowsForNoText) {
    EXPECT_EQ(stringOf("UTF8_STRING", "********"), std::nullopt);
    EXPECT_EQ(stringOf("UTF8_STRING", "*** 8 ***"), QStringLiteral("*** 8 ***"));
}

TEST_F(ClipboardTextTest, TakesALineThatNobodySelectedForNoText) {
    const QByteArray line = "the line with the cursor\n";
    EXPECT_EQ(stringOf("UTF8_STRING", line), std::nullopt);
    ForeignClient primary(server().display(), Selection::primary);
    for (const char *other : {"something else", "the line with the cursor"}) {
        primary.offer("UTF8_STRING", other);
        EXPECT_EQ(wait(pasteboard().string()), std::nullopt) << other;
    }
    primary.offer("UTF8_STRING", line);
    EXPECT_EQ(wait(pasteboard().string()), QString::fromLatin1(line));
}

TEST_F(ClipboardTextTest, KeepsLinesThatLookLikeIt) {
    for (const char *kept : {"a word", "two\nlines\n", "two\nlines"})
        EXPECT_EQ(stringOf("UTF8_STRING", kept), QString::fromLatin1(kept));
    other_->declare("application/x-openoffice-embed-source-xml", "a table");
    other_->declare("UTF8_STRING", "a cell\n");
    other_->own();
    EXPECT_EQ(wait(pasteboard().string()), QStringLiteral("a cell\n"));
}

TEST_F(ClipboardTextTest, ReadsWhatIsSelectedWithTheMouse) {
    PrimarySelection primary(*control_);
    ForeignClient owner(server().display(), Selection::primary);
    owner.clear();
    settle();
    EXPECT_EQ(wait(primary.primaryText(1min)), std::nullopt);
    const qint64 before = primary.changeCount();
    owner.offer("UTF8_STRING", "selected");
    EXPECT_TRUE(waitFor([&] { return primary.changeCount() != before; }));
    EXPECT_EQ(wait(primary.primaryText(1min)), QStringLiteral("selected"));
    const qint64 count = primary.changeCount();
    other_->offer("UTF8_STRING", "copied");
    settle();
    EXPECT_EQ(primary.changeCount(), count);
    EXPECT_EQ(wait(pasteboard().string()), QStringLiteral("copied"));
    EXPECT_EQ(wait(primary.primaryText(1min)), QStringLiteral("selected"));
    owner.die();
    EXPECT_TRUE(waitFor([&] { return primary.changeCount() != count; }));
}

TEST_F(ClipboardTextTest, WaitsForASilentSelectionNoLongerThanTheLimit) {
    PrimarySelection primary(*control_);
    ForeignClient owner(server().display(), Selection::primary);
    std::optional<Descriptor> held;
    owner.declareSpecially("UTF8_STRING", [&](Descriptor pipe) { held.emplace(std::move(pipe)); });
    owner.own();
    EXPECT_EQ(wait(primary.primaryText(50ms)), std::nullopt);
    EXPECT_TRUE(held);
    owner.declareSpecially("UTF8_STRING", [&](Descriptor pipe) {
        held.emplace(std::move(pipe));
        QTimer::singleShot(200, &owner, [&] { writeInBackground(std::move(*held), "late"); });
    });
    owner.own();
    EXPECT_EQ(wait(primary.primaryText(50ms)), std::nullopt);
    EXPECT_EQ(wait(primary.primaryText(1min)), QStringLiteral("late"));
}

} // namespace

} // namespace quillmender::wayland

int main(int argc, char **argv) {
    return quillmender::wayland::runClipboardTests(argc, argv);
}
