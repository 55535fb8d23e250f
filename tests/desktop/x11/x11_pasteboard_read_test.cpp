#include "desktop/x11/ScriptedOwner.h"
#include "desktop/x11/TestRequestor.h"
#include "desktop/x11/X11Test.h"

#include <QElapsedTimer>
#include <QTimer>

namespace quillmender::x11 {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

QByteArray pattern(qsizetype size) {
    QByteArray bytes(size, Qt::Uninitialized);
    for (qsizetype i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 131 + i / 251);
    return bytes;
}

class PasteboardReadTest : public X11Test {
  protected:
    void SetUp() override {
        X11Test::SetUp();
        owner_ = std::make_unique<ScriptedOwner>(server_.display());
    }

    QStringList types(const QList<PasteboardItem> &items) {
        QStringList names;
        for (const auto &item : items) {
            for (const auto &each : item.representations())
                names.append(each.type);
        }
        return names;
    }

    X11Property text(const QByteArray &bytes) { return {peer_->atom("UTF8_STRING"), 8, bytes}; }

    std::unique_ptr<ScriptedOwner> owner_;
};

TEST_F(PasteboardReadTest, RestoresTwentyOddTargetsByteForByte) {
    QList<QByteArray> names;
    QList<X11Property> properties;
    const QList<QByteArray> typeNames{"UTF8_STRING", "INTEGER", "ATOM", "x-test/odd;type=1"};
    for (int i = 0; i < 20; ++i) {
        names.append("application/x-test-" + QByteArray::number(i));
        const int format = 8 << i % 3;
        const auto type = owner_->atom(typeNames[i % typeNames.size()].constData());
        properties.append({type, static_cast<quint8>(format), pattern(qsizetype{i} * 4 * i)});
        owner_->offer(names[i].constData(), properties[i]);
    }
    const auto items = wait(pasteboard().items());
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_THAT(items[0].representations(), SizeIs(20));
    owner_.reset();
    ASSERT_TRUE(waitFor([&] { return ownerOf("CLIPBOARD") == XCB_WINDOW_NONE; }));
    pasteboard().replaceContents(items);

    TestRequestor requestor(*peer_);
    const QList<QByteArray> fixed{"TARGETS", "TIMESTAMP", "MULTIPLE"};
    EXPECT_TRUE(requestor.fetchTargets() == fixed + names);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(requestor.fetch(names[i].constData()), properties[i]) << names[i].toStdString();
    EXPECT_EQ(wait(pasteboard().items()), items);
}

TEST_F(PasteboardReadTest, LeavesTargetsWithSideEffectsAlone) {
    int asked = 0;
    for (const char *name : {"TIMESTAMP", "MULTIPLE", "TARGETS", "SAVE_TARGETS", "DELETE",
                             "INSERT_SELECTION", "INSERT_PROPERTY"})
        owner_->offerSpecially(name, [&asked](const auto &) { ++asked; });
    owner_->offer("UTF8_STRING", text("kept"));
    EXPECT_THAT(types(wait(pasteboard().items())), ElementsAre(QStringLiteral("UTF8_STRING")));
    EXPECT_EQ(asked, 0);
}

TEST_F(PasteboardReadTest, TakesLargeTargetsInChunks) {
    const X11Property large = text(pattern(10'000'000));
    owner_->offerIncrementally("image/png", large, 65'536);
    owner_->offerIncrementally("text/html", text(pattern(300'001)), 4'000);
    owner_->offerIncrementally("empty", text({}), 10);
    const auto items = wait(pasteboard().items());
    ASSERT_THAT(items, SizeIs(1));
    ASSERT_THAT(items[0].representations(), SizeIs(3));
    EXPECT_TRUE(items[0].representations()[0].data == large.value);
    EXPECT_TRUE(items[0].representations()[1].data == pattern(300'001));
    EXPECT_TRUE(items[0].representations()[2].data.isEmpty());
}

TEST_F(PasteboardReadTest, RestoresVeryLargeContents) {
    const X11Property image{owner_->atom("image/x-raw"), 8, pattern(qsizetype{200} * 1000 * 1000)};
    owner_->offer("UTF8_STRING", text("caption"));
    owner_->offerIncrementally("image/x-raw", image, qsizetype{1024} * 1024);
    const auto items = wait(pasteboard().items());
    ASSERT_THAT(types(items),
                ElementsAre(QStringLiteral("UTF8_STRING"), QStringLiteral("image/x-raw")));
    owner_.reset();
    ASSERT_TRUE(waitFor([&] { return ownerOf("CLIPBOARD") == XCB_WINDOW_NONE; }));
    pasteboard().replaceContents(items);
    TestRequestor requestor(*peer_);
    EXPECT_TRUE(requestor.fetch("image/x-raw") == image);
    EXPECT_EQ(requestor.fetch("UTF8_STRING"), text("caption"));
}

TEST_F(PasteboardReadTest, KeepsWhatArrivesWhenOneTargetNeverDoes) {
    owner_->offer("text/html", text("<b>x</b>"));
    owner_->offerSpecially("image/png", [](const auto &) {});
    owner_->offerSpecially("image/bmp",
                           [this](const auto &request) { owner_->notify(request, XCB_ATOM_NONE); });
    owner_->offer("UTF8_STRING", text("x"));
    EXPECT_THAT(types(wait(pasteboard().items())),
                ElementsAre(QStringLiteral("text/html"), QStringLiteral("UTF8_STRING")));
}

TEST_F(PasteboardReadTest, KeepsEveryTargetOfAnOwnerThatTakesItsTime) {
    QStringList offered;
    for (int i = 0; i < 8; ++i) {
        const QByteArray name = "text/x-slow-" + QByteArray::number(i);
        offered.append(QString::fromLatin1(name));
        // One after the other, as a program does that makes them up itself.
        const int delay = 100 * (i + 1);
        const auto answerLate = [this, name, delay](const xcb_selection_request_event_t &request) {
            QTimer::singleShot(delay, owner_.get(),
                               [this, name, request] { owner_->answer(request, text(name)); });
        };
        owner_->offerSpecially(name.constData(), answerLate);
    }
    EXPECT_EQ(types(wait(pasteboard().items())), offered);
}

TEST_F(PasteboardReadTest, GivesUpOnASilentOwner) {
    owner_->offer("UTF8_STRING", text("x"));
    owner_->isSilent = true;
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty());
    EXPECT_EQ(wait(pasteboard().string()), std::nullopt);
}

TEST_F(PasteboardReadTest, GivesUpOnATransferThatStopsHalfWay) {
    owner_->offer("UTF8_STRING", text("x"));
    owner_->offerSpecially("image/png", [this](const auto &request) {
        writeCardinals(owner_->connection(), request.requestor, request.property,
                       owner_->atom("INCR"), {1000});
        owner_->notify(request, request.property);
    });
    EXPECT_THAT(types(wait(pasteboard().items())), ElementsAre(QStringLiteral("UTF8_STRING")));
}

TEST_F(PasteboardReadTest, KeepsWhatAnOwnerGaveBeforeItDied) {
    owner_->offer("UTF8_STRING", text("x"));
    owner_->offerSpecially("image/png", [this](const auto &) { owner_->die(); });
    owner_->offerSpecially("image/bmp", [](const auto &) {});
    EXPECT_THAT(types(wait(pasteboard().items())), ElementsAre(QStringLiteral("UTF8_STRING")));
}

TEST_F(PasteboardReadTest, ReadsTheNewOwnerWhenTheOldOneLosesTheClipboard) {
    std::unique_ptr<ScriptedOwner> second;
    owner_->offer("text/plain", text("old"));
    owner_->offerSpecially("UTF8_STRING", [&](const auto &) {
        second = std::make_unique<ScriptedOwner>(server_.display());
        second->offer("UTF8_STRING", text("new"));
    });
    const auto items = wait(pasteboard().items());
    ASSERT_THAT(types(items), ElementsAre(QStringLiteral("UTF8_STRING")));
    EXPECT_EQ(items[0].representations()[0].data, "new");
}

TEST_F(PasteboardReadTest, SurvivesGarbage) {
    owner_->offer("UTF8_STRING", text("x"));
    const QList<quint32> atoms{0,
                               0xfffffff0,
                               owner_->atom("UTF8_STRING"),
                               owner_->atom("UTF8_STRING"),
                               owner_->atom("lie"),
                               0x7fffffff};
    owner_->targetsAnswer = X11Property{XCB_ATOM_ATOM, 32,
                                        QByteArray(reinterpret_cast<const char *>(atoms.data()),
                                                   atoms.size() * qsizetype{sizeof(quint32)})};
    owner_->offerSpecially("lie", [this](const auto &request) {
        owner_->notify(request, owner_->atom("WM_NAME"));
        owner_->notify(request, request.property);
    });
    EXPECT_THAT(types(wait(pasteboard().items())), ElementsAre(QStringLiteral("UTF8_STRING")));

    owner_->targetsAnswer = text("not a list of atoms");
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty());
}

TEST_F(PasteboardReadTest, LeavesTheClipboardToAnOwnerThatWasNeverReplaced) {
    const xcb_window_t user = owner_->connection().window();
    owner_->offer("UTF8_STRING", text("x"));
    owner_->offerSpecially("image/png", [](const auto &) {});
    const auto items = wait(pasteboard().items());
    const qint64 before = pasteboard().changeCount();
    pasteboard().replaceContents(items);
    finishTurn();
    EXPECT_NE(pasteboard().changeCount(), before);
    EXPECT_EQ(ownerOf("CLIPBOARD"), user) << "who still has the image";

    owner_->own();
    EXPECT_TRUE(waitFor([&] { return pasteboard().changeCount() > before + 1; }));
    pasteboard().replaceContents(items);
    EXPECT_EQ(ownerOf("CLIPBOARD"), services_->connection->window());
}

TEST_F(PasteboardReadTest, LeavesTheClipboardToAnOwnerThatDoesNotAnswer) {
    const xcb_window_t user = owner_->connection().window();
    owner_->isSilent = true;
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty());
    pasteboard().replaceContents({});
    finishTurn();
    EXPECT_EQ(ownerOf("CLIPBOARD"), user);
}

TEST_F(PasteboardReadTest, HasNoItemsWithoutOwner) {
    owner_.reset();
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty());
    EXPECT_EQ(wait(pasteboard().string()), std::nullopt);
}

TEST_F(PasteboardReadTest, CountsChangesOfOwnerEvenWithTheSameText) {
    finishTurn();
    const qint64 before = pasteboard().changeCount();
    owner_->own();
    EXPECT_TRUE(waitFor([&] { return pasteboard().changeCount() != before; }));
    const qint64 next = pasteboard().changeCount();
    owner_->die();
    EXPECT_TRUE(waitFor([&] { return pasteboard().changeCount() != next; }));
}

TEST_F(PasteboardReadTest, JoinsSurrogatesThatWereEncodedOneByOne) {
    owner_->offer("UTF8_STRING",
                  text("a \xed\xa0\xbd\xed\xb8\x80\xed\xa0\xbd\xed\xb2\xa9 \xed\x95\x9c"));
    EXPECT_EQ(wait(pasteboard().string()), QStringLiteral("a \U0001F600\U0001F4A9 \uD55C"));
    // What has no other half is no character.
    owner_->offer("UTF8_STRING", text("b \xed\xa0\xbd c \xed\xa0"));
    const auto broken = wait(pasteboard().string());
    ASSERT_TRUE(broken);
    EXPECT_TRUE(broken->isValidUtf16());
    EXPECT_TRUE(broken->startsWith(QStringLiteral("b \uFFFD")));
}

TEST_F(PasteboardReadTest, TakesALineThatNobodySelectedForNoText) {
    owner_->offer("UTF8_STRING", text("the line with the cursor\n"));
    EXPECT_EQ(wait(pasteboard().string()), std::nullopt);
    ScriptedOwner primary(server_.display(), "PRIMARY");
    for (const char *other : {"something else", "the line with the cursor"}) {
        primary.offer("UTF8_STRING", text(other));
        EXPECT_EQ(wait(pasteboard().string()), std::nullopt) << other;
    }
    primary.offer("UTF8_STRING", text("the line with the cursor\n"));
    EXPECT_EQ(wait(pasteboard().string()), QStringLiteral("the line with the cursor\n"));
}

TEST_F(PasteboardReadTest, KeepsLinesThatLookLikeIt) {
    for (const char *kept : {"a word", "two\nlines\n", "two\nlines"}) {
        owner_->offer("UTF8_STRING", text(kept));
        EXPECT_EQ(wait(pasteboard().string()), QString::fromLatin1(kept));
    }
    owner_->offer("application/x-openoffice-embed-source-xml", text("a table"));
    owner_->offer("UTF8_STRING", text("a cell\n"));
    EXPECT_EQ(wait(pasteboard().string()), QStringLiteral("a cell\n"));
}

TEST_F(PasteboardReadTest, PrefersUtf8AndFallsBackToLatin1AndCompoundText) {
    const auto string = [this] { return wait(pasteboard().string()); };
    owner_->offer("COMPOUND_TEXT",
                  {owner_->atom("COMPOUND_TEXT"), 8, "caf\xe9 \x1b%G\xe2\x82\xac\x1b%@!"});
    EXPECT_EQ(string(), QStringLiteral("café €!"));
    owner_->offer("STRING", {XCB_ATOM_STRING, 8, "caf\xe9"});
    EXPECT_EQ(string(), QStringLiteral("café"));
    owner_->offer("text/plain;charset=utf-8",
                  {owner_->atom("text/plain;charset=utf-8"), 8, "mime \xe2\x82\xac"});
    EXPECT_EQ(string(), QStringLiteral("mime €"));
    owner_->offer("UTF8_STRING", text("\xf0\x9f\x91\xaa"));
    EXPECT_EQ(string(), QStringLiteral("👪"));
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
