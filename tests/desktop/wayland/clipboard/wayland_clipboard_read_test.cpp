#include "desktop/wayland/clipboard/ClipboardTest.h"
#include "platform/linux/wayland/clipboard/SelectionReader.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QScopeGuard>
#include <QTimer>

#include <poll.h>
#include <sys/resource.h>
#include <vector>

namespace quillmender::wayland {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

bool hasReader(const Descriptor &pipe) {
    pollfd end{pipe.get(), 0, 0};
    return ::poll(&end, 1, 0) == 0;
}

class ClipboardReadTest : public ClipboardTest {
  protected:
    /// Takes the pipe and says nothing.
    ForeignClient::Answer hold() {
        return [this](Descriptor pipe) { held_.push_back(std::move(pipe)); };
    }

    /// Declares something of each kind that a user has on the clipboard.
    void declareMixture() {
        mixture_ = {{"text/plain;charset=utf-8", "gr\xc3\xbc\xc3\x9f"},
                    {"text/html", "<b>gr\xc3\xbc\xc3\x9f</b>"},
                    {"image/png", pattern(250'001)},
                    {"application/x-odd name;v=\"1\", (private)", pattern(3'000'000)},
                    {"text/plain", "gr\xc3\xbc\xc3\x9f"},
                    {"x-empty", ""},
                    {"chromium/x-internal", QByteArray(3, '\0')}};
        for (const OfferedType &each : mixture_)
            other_->declare(each.name, each.data);
    }

    OfferedContents mixture_;
    std::vector<Descriptor> held_;
};

TEST_F(ClipboardReadTest, RestoresEveryTypeByteForByte) {
    declareMixture();
    other_->own();
    const auto items = wait(pasteboard().items());
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(toOfferedContents(items), mixture_);

    ForeignClient reader(server().display());
    other_->die();
    ASSERT_TRUE(waitFor([&] { return reader.types().isEmpty(); }));
    pasteboard().replaceContents(items);
    QList<QByteArray> names;
    for (const OfferedType &each : mixture_)
        names.append(each.name);
    settleOwn();
    EXPECT_EQ(reader.types(), names);
    for (const OfferedType &each : mixture_)
        EXPECT_TRUE(reader.fetch(each.name) == each.data) << each.name.toStdString();
    EXPECT_EQ(wait(pasteboard().items()), items);
}

TEST_F(ClipboardReadTest, RestoresVeryLargeContents) {
    const QByteArray image = pattern(qsizetype{100} * 1000 * 1000);
    other_->declare("text/plain", "caption");
    other_->declare("image/x-raw", image);
    other_->own();
    const auto items = wait(pasteboard().items());
    ASSERT_THAT(typesOf(items),
                ElementsAre(QStringLiteral("text/plain"), QStringLiteral("image/x-raw")));
    other_->clear();
    settle();
    pasteboard().replaceContents(items);
    settleOwn();
    EXPECT_TRUE(other_->fetch("image/x-raw") == image);
    EXPECT_EQ(other_->fetch("text/plain"), "caption");
}

TEST_F(ClipboardReadTest, LeavesTypesThatAreNoDataAlone) {
    for (const char *name : {"TIMESTAMP", "MULTIPLE", "TARGETS", "SAVE_TARGETS", "DELETE",
                             "INSERT_SELECTION", "INSERT_PROPERTY"})
        other_->declare(name, "none");
    other_->declare("UTF8_STRING", "kept");
    other_->own();
    EXPECT_THAT(typesOf(wait(pasteboard().items())), ElementsAre(QStringLiteral("UTF8_STRING")));
    EXPECT_THAT(other_->asked(), ElementsAre("UTF8_STRING"));
}

TEST_F(ClipboardReadTest, AsksForAllTypesBeforeTheFirstAnswer) {
    other_->declareSpecially("one", hold());
    other_->declareSpecially("two", hold());
    other_->declareSpecially("three", hold());
    other_->own();
    auto items = pasteboard().items();
    ASSERT_TRUE(waitFor([&] { return held_.size() == 3; }));
    EXPECT_FALSE(items.isReady());
    for (Descriptor &each : held_)
        writeInBackground(std::move(each), "x");
    EXPECT_THAT(typesOf(wait(std::move(items))), SizeIs(3));
}

TEST_F(ClipboardReadTest, ReadsMoreTypesThanTheProcessMayHaveFiles) {
    rlimit usual{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &usual), 0);
    const auto restore = qScopeGuard([&] { ::setrlimit(RLIMIT_NOFILE, &usual); });
    const rlimit few{256, usual.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    QStringList names;
    for (int i = 0; i < 600; ++i) {
        names.append(QStringLiteral("x-test/%1").arg(i));
        other_->declare(names.constLast().toLatin1(), QByteArray::number(i));
    }
    other_->own();
    EXPECT_EQ(typesOf(wait(pasteboard().items())), names);
}

TEST_F(ClipboardReadTest, KeepsWhatArrivesWhenOneTypeNeverDoes) {
    other_->declare("text/html", "<b>x</b>");
    other_->declareSpecially("image/png", hold());
    other_->declare("UTF8_STRING", "x");
    other_->own();
    EXPECT_EQ(wait(pasteboard().itemsWithin(100ms)), std::nullopt);
    EXPECT_THAT(typesOf(wait(pasteboard().items())),
                ElementsAre(QStringLiteral("text/html"), QStringLiteral("UTF8_STRING")));
}

TEST_F(ClipboardReadTest, KeepsEveryTypeOfAnOwnerThatTakesItsTime) {
    QStringList offered;
    for (int i = 0; i < 8; ++i) {
        offered.append(QStringLiteral("text/x-slow-%1").arg(i));
        // One after the other, as a program does that makes them up itself.
        const int delay = 100 * (i + 1);
        other_->declareSpecially(offered.constLast().toLatin1(), [this, delay](Descriptor pipe) {
            const auto late = std::make_shared<Descriptor>(std::move(pipe));
            QTimer::singleShot(delay, other_.get(),
                               [late] { writeInBackground(std::move(*late), "slow"); });
        });
    }
    other_->own();
    EXPECT_EQ(typesOf(wait(pasteboard().items())), offered);
}

TEST_F(ClipboardReadTest, GivesUpOnASilentOwner) {
    other_->declareSpecially("UTF8_STRING", hold());
    other_->own();
    EXPECT_EQ(wait(pasteboard().itemsWithin(50ms)), std::nullopt);
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty());
    EXPECT_EQ(wait(pasteboard().string()), std::nullopt);
}

TEST_F(ClipboardReadTest, GivesUpOnATransferThatStopsHalfWay) {
    other_->declare("UTF8_STRING", "x");
    other_->declareSpecially("image/png", [this](Descriptor pipe) {
        EXPECT_EQ(::write(pipe.get(), "half", 4), 4);
        held_.push_back(std::move(pipe));
    });
    other_->own();
    EXPECT_THAT(typesOf(wait(pasteboard().items())), ElementsAre(QStringLiteral("UTF8_STRING")));
    // Too late: nobody listens any more, and nothing comes of it.
    EXPECT_TRUE(waitFor([&] { return !hasReader(held_.back()); }));
}

TEST_F(ClipboardReadTest, LeavesOutWhatWasUnderWayWhenTheOwnerDied) {
    other_->declare("UTF8_STRING", "x");
    other_->declareSpecially("image/png", [this](Descriptor pipe) {
        const QByteArray part = pattern(65'536);
        EXPECT_EQ(::write(pipe.get(), part.constData(), 65'536), 65'536);
        held_.push_back(std::move(pipe));
        QTimer::singleShot(50, pasteboard_.get(), [this] {
            held_.clear();
            other_->die();
        });
    });
    other_->own();
    EXPECT_THAT(typesOf(wait(pasteboard().items())), ElementsAre(QStringLiteral("UTF8_STRING")));
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty()) << "nobody has it any more";
}

TEST_F(ClipboardReadTest, KeepsTheAnswersOfAnOwnerThatGivesTheClipboardUp) {
    other_->declareSpecially("x-special/cut-files", [this](Descriptor pipe) {
        EXPECT_EQ(::write(pipe.get(), "cut", 3), 3);
        held_.push_back(std::move(pipe));
        QTimer::singleShot(0, other_.get(), [this] {
            other_->clear();
            held_.clear();
        });
    });
    other_->own();
    EXPECT_THAT(typesOf(wait(pasteboard().items())),
                ElementsAre(QStringLiteral("x-special/cut-files")));
}

TEST_F(ClipboardReadTest, ReadsTheNewOwnerWhenTheOldOneLosesTheClipboard) {
    ForeignClient second(server().display());
    other_->declare("text/plain", "old");
    other_->declareSpecially("UTF8_STRING", [&](Descriptor pipe) {
        second.declare("UTF8_STRING", "new");
        second.own();
        held_.push_back(std::move(pipe));
    });
    other_->own();
    const auto items = wait(pasteboard().items());
    ASSERT_THAT(typesOf(items), ElementsAre(QStringLiteral("UTF8_STRING")));
    EXPECT_EQ(items[0].representations()[0].data, "new");
}

TEST_F(ClipboardReadTest, GivesUpOnAClipboardThatChangesWithEachReading) {
    std::function<void()> ownAnew;
    int owned = 0;
    ownAnew = [&] {
        ++owned;
        other_->declareSpecially("UTF8_STRING", [&](Descriptor pipe) {
            held_.push_back(std::move(pipe));
            QTimer::singleShot(0, other_.get(), ownAnew);
        });
        other_->own();
    };
    ownAnew();
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty());
    EXPECT_EQ(owned, 4) << "the first, and one for each attempt";
}

TEST_F(ClipboardReadTest, SurvivesGarbage) {
    other_->declare("", "nothing");
    other_->declare("UTF8_STRING", "x");
    other_->declare("UTF8_STRING", "y");
    other_->declare("\xff\xfe(\x01", "odd");
    other_->declareSpecially("closed", [](Descriptor) {});
    other_->own();
    const auto items = wait(pasteboard().items());
    EXPECT_THAT(typesOf(items),
                ElementsAre(QStringLiteral("UTF8_STRING"), QString::fromLatin1("\xff\xfe(\x01"),
                            QStringLiteral("closed")));
    EXPECT_EQ(items[0].representations()[0].data, "x");
}

TEST_F(ClipboardReadTest, HoldsNoMoreThanTheBounds) {
    other_->declare("text/plain", "kept");
    other_->declare("image/one", pattern(1'500'000));
    other_->declare("image/two", pattern(3'000'000));
    other_->own();
    settle();
    SelectionReader small(*control_, Selection::clipboard, {2'000'000, 100'000'000});
    const auto within = wait(small.readAll());
    EXPECT_FALSE(within.isCutShort);
    ASSERT_THAT(within.contents, SizeIs(2));
    EXPECT_EQ(within.contents[1].name, "image/one");
    SelectionReader little(*control_, Selection::clipboard, {100'000'000, 500'000});
    const auto least = wait(little.readAll());
    ASSERT_THAT(least.contents, SizeIs(1));
    EXPECT_EQ(least.contents[0].data, "kept");
}

TEST_F(ClipboardReadTest, LeavesTheClipboardToAnOwnerThatWasNeverReplaced) {
    other_->declare("UTF8_STRING", "x");
    other_->declareSpecially("image/png", hold());
    other_->own();
    const auto items = wait(pasteboard().items());
    const qint64 before = pasteboard().changeCount();
    pasteboard().replaceContents(items);
    settle();
    EXPECT_NE(pasteboard().changeCount(), before);
    EXPECT_TRUE(other_->isOwner()) << "who still has the image";

    other_->offer("UTF8_STRING", "y");
    EXPECT_TRUE(waitFor([&] { return pasteboard().changeCount() > before + 1; }));
    pasteboard().replaceContents(items);
    settle();
    EXPECT_FALSE(other_->isOwner());
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "x");
}

TEST_F(ClipboardReadTest, ReplacesWhatWasCopiedBeforeAndNotYetHeardOf) {
    other_->offer("UTF8_STRING", "the user's");
    const auto items = wait(pasteboard().items());
    other_->declare("UTF8_STRING", "copied by the chord");
    other_->own();
    other_->settleAlone();
    pasteboard().replaceContents(items);
    settle();
    EXPECT_FALSE(other_->isOwner());
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "the user's");

    // What is copied later is the user's.
    other_->offer("UTF8_STRING", "the user's next");
    pasteboard().replaceContents(wait(pasteboard().items()));
    settle();
    EXPECT_TRUE(other_->isOwner());
    other_->offer("UTF8_STRING", "newer");
    settle();
    EXPECT_TRUE(other_->isOwner());
}

TEST_F(ClipboardReadTest, LeavesTheClipboardToAnOwnerThatDoesNotAnswer) {
    other_->declareSpecially("UTF8_STRING", hold());
    other_->own();
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty());
    pasteboard().replaceContents({});
    settle();
    EXPECT_TRUE(other_->isOwner());
}

TEST_F(ClipboardReadTest, HasNoItemsWithoutOwner) {
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty());
    EXPECT_EQ(wait(pasteboard().itemsWithin(100ms)), QList<PasteboardItem>());
    EXPECT_EQ(wait(pasteboard().string()), std::nullopt);
}

TEST_F(ClipboardReadTest, CountsChangesOfOwnerEvenWithTheSameText) {
    other_->offer("UTF8_STRING", "x");
    settle();
    const qint64 before = pasteboard().changeCount();
    other_->offer("UTF8_STRING", "x");
    EXPECT_TRUE(waitFor([&] { return pasteboard().changeCount() != before; }));
    settle();
    const qint64 next = pasteboard().changeCount();
    other_->die();
    EXPECT_TRUE(waitFor([&] { return pasteboard().changeCount() != next; }));
}

TEST_F(ClipboardReadTest, KnowsTheClipboardWhenItIsAskedAtOnce) {
    other_->offer("UTF8_STRING", "x");
    const auto fresh = openPatiently(server().display());
    const auto control = DataControl::create(*fresh);
    WaylandPasteboard pasteboard(*control, chords_, copies_);
    EXPECT_THAT(wait(pasteboard.items()), SizeIs(1));
}

TEST_F(ClipboardReadTest, HasNothingWhenTheCompositorIsGone) {
    other_->declareSpecially("UTF8_STRING", hold());
    other_->own();
    auto during = pasteboard().items();
    ASSERT_TRUE(waitFor([&] { return held_.size() == 1; }));
    const auto lent = lend(QStringLiteral("lent"));
    auto isRead = lent->wasRead(1min);
    server().kill();
    EXPECT_THAT(wait(std::move(during)), IsEmpty());
    EXPECT_FALSE(wait(std::move(isRead)));
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty());
    EXPECT_EQ(wait(pasteboard().string()), std::nullopt);
    EXPECT_EQ(lend(QStringLiteral("text")), nullptr);
    pasteboard().replaceContents(itemOf(QStringLiteral("UTF8_STRING"), "x"));
    pasteboard().replaceContents({});
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty());
    QCoro::waitFor(pasteboard().handOver());
    PrimarySelection primary(*control_);
    EXPECT_EQ(wait(primary.primaryText(1min)), std::nullopt);

    int wakes = 0;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake,
                     control_.get(), [&wakes] { ++wakes; });
    bool isOver = false;
    QTimer::singleShot(100, [&isOver] { isOver = true; });
    while (!isOver)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_LT(wakes, 20);
}

TEST_F(ClipboardReadTest, WaitsNoLongerThanTheLimitForACompositorThatHangs) {
    other_->offer("UTF8_STRING", "x");
    settle();
    server().stop();
    auto within = pasteboard().itemsWithin(50ms);
    EXPECT_TRUE(waitFor([&] { return within.isReady(); }));
    server().letGoOn();
    EXPECT_EQ(wait(std::move(within)), std::nullopt);
    EXPECT_THAT(wait(pasteboard().items()), SizeIs(1));
}

TEST_F(ClipboardReadTest, EndsWithThePasteboard) {
    other_->declareSpecially("UTF8_STRING", hold());
    other_->own();
    auto items = pasteboard().items();
    auto string = pasteboard().string();
    ASSERT_TRUE(waitFor([&] { return held_.size() == 2; }));
    pasteboard_.reset();
    control_.reset();
    connection_.reset();
    EXPECT_ANY_THROW(wait(std::move(items)));
    EXPECT_ANY_THROW(wait(std::move(string)));
}

} // namespace

} // namespace quillmender::wayland

int main(int argc, char **argv) {
    return quillmender::wayland::runClipboardTests(argc, argv);
}
