#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/ClipboardProbe.h"
#include "desktop/harness/DesktopTest.h"
#include "desktop/harness/TestApplication.h"

#include <gmock/gmock.h>

#include <X11/keysym.h>

namespace quillmender::harness {
namespace {

class ClipboardTest : public DesktopTest {};

TEST_F(ClipboardTest, ArrivesByteByByteAlsoInIncrements) {
    QList<ClipboardRepresentation> offer = ClipboardOwner::textHtmlAndImage();
    QByteArray large(40'000'003, '\0');
    for (qsizetype index = 0; index < large.size(); ++index)
        large[index] = static_cast<char>(index * 31 % 251);
    offer.append({"application/x-large", "application/x-large", 8, large});
    const ClipboardOwner owner(desktop().display(), offer);
    const ClipboardContents contents = ClipboardProbe(desktop().display()).read();
    EXPECT_EQ(contents.owner, owner.window());
    EXPECT_THAT(contents.targets,
                testing::ElementsAre("TARGETS", "TIMESTAMP", "MULTIPLE", "UTF8_STRING",
                                     "text/plain;charset=utf-8", "STRING", "text/html", "image/png",
                                     "application/x-large"));
    EXPECT_TRUE(contents.representations == offer);
    EXPECT_TRUE(owner.ownsSelection());
    EXPECT_EQ(owner.requests().size(), offer.size());
}

TEST_F(ClipboardTest, DifferentBytesAreNotEqual) {
    const ClipboardContents one{.owner = 1, .targets = {}, .representations = {{"A", "A", 8, "x"}}};
    ClipboardContents other = one;
    other.owner = 2;
    EXPECT_TRUE(one == other);
    other.representations[0].bytes = "y";
    EXPECT_FALSE(one == other);
}

TEST_F(ClipboardTest, IsEmptyWithoutOwner) {
    const ClipboardContents contents = ClipboardProbe(desktop().display()).read();
    EXPECT_EQ(contents.owner, xcb_window_t{XCB_WINDOW_NONE});
    EXPECT_TRUE(contents.targets.isEmpty());
}

TEST_F(ClipboardTest, SelectionsAreSeparate) {
    const ClipboardOwner primary(desktop().display(),
                                 ClipboardOwner::plainText(QStringLiteral("primary")), "PRIMARY");
    EXPECT_EQ(ClipboardProbe(desktop().display(), "PRIMARY").text(), QStringLiteral("primary"));
    EXPECT_EQ(ClipboardProbe(desktop().display()).owner(), xcb_window_t{XCB_WINDOW_NONE});
}

TEST_F(ClipboardTest, RealApplicationPastesFromAndTakesOver) {
    const ClipboardOwner owner(desktop().display(),
                               ClipboardOwner::plainText(QStringLiteral("pasted")));
    auto mousepad = TestApplication::mousepad(desktop());
    const Accessible text = mousepad.focusedText();
    desktop().input().chord({XK_Control_L, XK_v});
    waitUntil([&] { return text.text() == QStringLiteral("pasted"); },
              QStringLiteral("the editor has pasted"));
    desktop().input().chord({XK_Control_L, XK_a});
    desktop().input().chord({XK_Control_L, XK_c});
    waitUntil([&] { return !owner.ownsSelection(); }, QStringLiteral("the editor has copied"));
    EXPECT_EQ(ClipboardProbe(desktop().display()).text(), QStringLiteral("pasted"));
}

} // namespace
} // namespace quillmender::harness
