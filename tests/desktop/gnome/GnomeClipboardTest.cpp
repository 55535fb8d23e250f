#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/TestApplication.h"
#include "desktop/harness/gnome/GnomeDesktopTest.h"

#include <X11/keysym.h>

namespace quillmender::harness {
namespace {

class GnomeClipboardTest : public GnomeDesktopTest {};

TEST_F(GnomeClipboardTest, EveryTypeIsReadAsItIsOffered) {
    constexpr qsizetype threeMegabytes = 3'000'000;
    QList<ClipboardRepresentation> offer = ClipboardOwner::textHtmlAndImage();
    offer.append({"application/x-private-drawing", "application/x-private-drawing", 8,
                  QByteArray(threeMegabytes, 'x')});
    const auto owner = desktop().ownClipboard(offer);
    const ClipboardContents contents = desktop().readClipboard();
    ASSERT_EQ(contents.representations.size(), offer.size());
    for (const ClipboardRepresentation &each : std::as_const(offer)) {
        EXPECT_EQ(contents.bytes(each.target), each.bytes) << each.target.toStdString();
        EXPECT_TRUE(owner->requests().contains(each.target)) << each.target.toStdString();
    }
    EXPECT_TRUE(owner->ownsSelection());
}

TEST_F(GnomeClipboardTest, ItIsLostToWhoCopiesAndPastedByWhoPastes) {
    const auto owner = desktop().ownClipboard(ClipboardOwner::plainText(QStringLiteral("given ")));
    const auto editor = TestApplication::mousepad(desktop(), QStringLiteral("taken"));
    const Accessible text = editor.focusedText();
    desktop().input().chord({XK_Control_L, XK_v});
    waitUntil([&] { return text.text() == QStringLiteral("given taken"); },
              QStringLiteral("it is pasted"));
    EXPECT_TRUE(owner->ownsSelection());
    desktop().input().chord({XK_Control_L, XK_a});
    waitUntil([&] { return text.selectedText() == text.text(); },
              QStringLiteral("all is selected"));
    desktop().input().chord({XK_Control_L, XK_c});
    waitUntil([&] { return !owner->ownsSelection(); }, QStringLiteral("the editor takes it"));
    EXPECT_EQ(desktop().readClipboardText(defaultDeadline), "given taken");
}

TEST_F(GnomeClipboardTest, AnEmptyOneHasNothing) {
    EXPECT_TRUE(desktop().readClipboard().representations.isEmpty());
    EXPECT_EQ(desktop().readClipboardText(defaultDeadline), std::nullopt);
}

} // namespace
} // namespace quillmender::harness
