#include "desktop/hostile/HostileFixture.h"
#include "support/ProviderAnswers.h"

#include <algorithm>
#include <random>

namespace quillmender {
namespace {

using harness::ClipboardOwner;
using harness::ClipboardProbe;
using harness::ClipboardRepresentation;
using harness::waitUntil;

QByteArray noise(std::mt19937 &random, qsizetype size) {
    QByteArray bytes(size, Qt::Uninitialized);
    std::ranges::generate(bytes, [&] { return static_cast<char>(random()); });
    return bytes;
}

/// Sessions one after another, each with something else on the clipboard before.
class ClipboardKeptTest : public HostileFixture {
  protected:
    enum class End { replaced, refused, closed };

    /// Through the clipboard, which is what borrows it.
    void runSession(End end) {
        selectWord();
        provider().setAnswer(
            end == End::refused
                ? test::ScriptedAnswer::http(401, test::errorBody(QStringLiteral("No such key.")))
                : test::ScriptedAnswer::http(200, test::openAIBody(wrong)));
        pressHotKey();
        waitForPanel(wrong);
        if (end != End::closed) {
            ++requests_;
            click(QStringLiteral("Fix My Grammar"));
            waitForRequest(requests_);
        }
        if (end == End::refused)
            waitForPanel(QStringLiteral("No such key."));
        if (end != End::replaced)
            click(QStringLiteral("Close"));
        waitUntilPanelIsGone();
    }

    /// The owner is asked once more after the session, and has to have what it had.
    void expectKept(const QList<ClipboardRepresentation> &offer) {
        for (const End end : {End::replaced, End::refused, End::closed}) {
            SCOPED_TRACE(static_cast<int>(end));
            const ClipboardOwner owner(desktop().display(), offer);
            runSession(end);
            expectOffered(offer);
        }
    }

    void expectOffered(const QList<ClipboardRepresentation> &offer) {
        const auto now = ClipboardProbe(desktop().display()).read().representations;
        ASSERT_EQ(now.size(), offer.size());
        for (qsizetype i = 0; i < offer.size(); ++i) {
            EXPECT_EQ(now[i].target.toStdString(), offer[i].target.toStdString());
            EXPECT_TRUE(now[i] == offer[i]) << offer[i].target.toStdString();
        }
    }

  private:
    void selectWord() {
        source().activate();
        selectByKeyboard(input(), letter, wrong);
        waitUntilSelected(wrong);
    }

    size_t requests_ = 0;
};

TEST_F(ClipboardKeptTest, FilesThatWereCut) {
    start();
    openLetter(Route::clipboard);
    const QByteArray uri = "file:///home/user/report%20of%20May.odt";
    expectKept({{"x-special/gnome-copied-files", "x-special/gnome-copied-files", 8, "cut\n" + uri},
                {"text/uri-list", "text/uri-list", 8, uri + "\r\n"},
                {"UTF8_STRING", "UTF8_STRING", 8, "/home/user/report of May.odt"}});
}

TEST_F(ClipboardKeptTest, HundredTargetsOfEverySort) {
    start();
    openLetter(Route::clipboard);
    std::mt19937 random(5);
    QList<ClipboardRepresentation> offer;
    for (int i = 0; i < 100; ++i) {
        const int format = 8 << i % 3;
        const qsizetype bytes = i % 7 == 0 ? 0 : qsizetype{i} * 40;
        offer.append({"application/x-test-" + QByteArray::number(i),
                      i % 2 == 0 ? "UTF8_STRING" : "x-test/type", format, noise(random, bytes)});
    }
    expectKept(offer);
}

TEST_F(ClipboardKeptTest, RichTextWithAnImageTooLargeForOneProperty) {
    start();
    openLetter(Route::clipboard);
    std::mt19937 random(6);
    constexpr qsizetype size = qsizetype{24} * 1024 * 1024;
    expectKept({{"text/html", "text/html", 8, "<b>bold</b>"},
                {"text/rtf", "text/rtf", 8, "{\\rtf1 \\b bold}"},
                {"image/bmp", "image/bmp", 8, noise(random, size)},
                {"x-kde-passwordManagerHint", "x-kde-passwordManagerHint", 8, "secret"}});
}

TEST_F(ClipboardKeptTest, OwnerThatDiesDuringTheSessionLeavesItsContents) {
    start();
    openLetter(Route::clipboard);
    const auto offer = ClipboardOwner::textHtmlAndImage();
    {
        const ClipboardOwner owner(desktop().display(), offer);
        askForAnswer();
    }
    provider().release();
    waitUntilPanelIsGone();
    expectOffered(offer);
    expectText(mended);
}

TEST_F(ClipboardKeptTest, EmptyStaysEmpty) {
    start();
    openLetter(Route::clipboard);
    // Whoever owned it last is gone.
    {
        const ClipboardOwner owner(desktop().display(), ClipboardOwner::plainText({}));
    }
    runSession(End::replaced);
    ClipboardProbe probe(desktop().display());
    waitUntil([&] { return probe.owner() == XCB_WINDOW_NONE; },
              QStringLiteral("the clipboard is empty again"));
}

} // namespace
} // namespace quillmender
