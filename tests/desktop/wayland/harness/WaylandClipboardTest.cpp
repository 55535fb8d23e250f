#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/TestApplication.h"
#include "desktop/harness/wayland/WaylandClipboardOwner.h"
#include "desktop/harness/wayland/WaylandClipboardProbe.h"
#include "desktop/harness/wayland/WaylandDesktopTest.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <gmock/gmock.h>

#include <X11/keysym.h>

namespace quillmender::harness {
namespace {

using std::chrono_literals::operator""ms;

const QByteArray anyType = "application/x-any";

QByteArray someBytes(qsizetype size) {
    QByteArray bytes(size, '\0');
    for (qsizetype index = 0; index < size; ++index)
        bytes[index] = static_cast<char>(index * 31 % 251);
    return bytes;
}

class WaylandClipboardTest : public EachCompositorTest {
  protected:
    std::unique_ptr<WaylandClipboardOwner> own(const QByteArray &bytes) {
        return std::make_unique<WaylandClipboardOwner>(
            desktop().socketPath(), QList<ClipboardRepresentation>{{anyType, anyType, 8, bytes}});
    }
};

TEST_P(WaylandClipboardTest, ArrivesByteByByte) {
    QList<ClipboardRepresentation> offer = ClipboardOwner::textHtmlAndImage();
    offer.append({anyType, anyType, 8, someBytes(40'000'003)});
    const WaylandClipboardOwner owner(desktop().socketPath(), offer);
    const ClipboardContents contents = WaylandClipboardProbe(desktop().socketPath()).read();
    QList<QByteArray> types;
    for (ClipboardRepresentation &each : offer) {
        each.type = each.target;
        types.append(each.target);
    }
    EXPECT_EQ(contents.targets, types);
    EXPECT_TRUE(contents.representations == offer);
    EXPECT_TRUE(owner.ownsSelection());
    EXPECT_EQ(owner.requests(), types);
    for (const ClipboardSend &send : owner.sends()) {
        EXPECT_EQ(send.reader, QCoreApplication::applicationPid()) << send.type.toStdString();
        EXPECT_TRUE(send.isOver) << send.type.toStdString();
    }
    EXPECT_EQ(owner.sends().last().sent, 40'000'003);
}

TEST_P(WaylandClipboardTest, IsEmptyWithoutOwnerAndAfterItsEnd) {
    EXPECT_TRUE(WaylandClipboardProbe(desktop().socketPath()).isEmpty());
    auto owner = own("bytes");
    EXPECT_FALSE(WaylandClipboardProbe(desktop().socketPath()).isEmpty());
    owner.reset();
    waitUntil([&] { return WaylandClipboardProbe(desktop().socketPath()).isEmpty(); },
              QStringLiteral("the clipboard is empty"));
}

TEST_P(WaylandClipboardTest, ClipboardsAreSeparate) {
    const WaylandClipboardOwner primary(desktop().socketPath(),
                                        ClipboardOwner::plainText(QStringLiteral("primary")),
                                        SelectionKind::primary);
    EXPECT_EQ(desktop().selectedText(), QStringLiteral("primary"));
    EXPECT_TRUE(WaylandClipboardProbe(desktop().socketPath()).isEmpty());
}

TEST_P(WaylandClipboardTest, NewOwnerTakesOver) {
    const auto first = own("first");
    const auto second = own("second");
    waitUntil([&] { return !first->ownsSelection(); }, QStringLiteral("the first one knows"));
    EXPECT_TRUE(second->ownsSelection());
    EXPECT_EQ(WaylandClipboardProbe(desktop().socketPath()).readType(anyType), "second");
    EXPECT_TRUE(first->requests().isEmpty());
}

TEST_P(WaylandClipboardTest, SlowOwnerComesToTheEnd) {
    const QByteArray bytes = someBytes(100'000);
    const auto owner = own(bytes);
    owner->send(anyType, SendManner::slowly);
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_EQ(WaylandClipboardProbe(desktop().socketPath()).readType(anyType), bytes);
    // 25 parts with 10 ms after each.
    EXPECT_GE(elapsed.elapsed(), 200);
}

TEST_P(WaylandClipboardTest, StalledOwnerSendsNothingMore) {
    const QByteArray bytes = someBytes(100);
    const auto owner = own(bytes);
    for (const auto &[manner, sent] :
         {std::pair(SendManner::never, 0), std::pair(SendManner::halfway, 50)}) {
        owner->send(anyType, manner);
        WaylandClipboardProbe probe(desktop().socketPath());
        EXPECT_THROW(probe.readType(anyType, 200ms), HarnessError);
        EXPECT_EQ(owner->sends().last().sent, sent);
        waitUntil([&] { return owner->sends().last().isOver; },
                  QStringLiteral("the owner sees that nobody reads any more"));
    }
}

TEST_P(WaylandClipboardTest, EndlessOwnerNeverEnds) {
    const auto owner = own(someBytes(1000));
    owner->send(anyType, SendManner::endlessly);
    WaylandClipboardProbe probe(desktop().socketPath());
    EXPECT_THROW(probe.readType(anyType, 200ms), HarnessError);
    EXPECT_GT(owner->sends().last().sent, 100'000);
}

TEST_P(WaylandClipboardTest, OwnerThatCutsShortOrDiesSendsHalf) {
    const QByteArray bytes = someBytes(1000);
    const auto owner = own(bytes);
    owner->send(anyType, SendManner::cutShort);
    WaylandClipboardProbe probe(desktop().socketPath());
    EXPECT_EQ(probe.readType(anyType), bytes.first(500));
    EXPECT_TRUE(owner->ownsSelection());
    owner->dieAt(anyType);
    EXPECT_EQ(probe.readType(anyType), bytes.first(500));
    waitUntil([&] { return probe.isEmpty(); }, QStringLiteral("the clipboard is empty"));
    EXPECT_FALSE(owner->ownsSelection());
}

TEST_P(WaylandClipboardTest, RealApplicationPastesFromAndTakesOver) {
    const auto owner = desktop().ownClipboard(ClipboardOwner::plainText(QStringLiteral("pasted")));
    auto mousepad = TestApplication::mousepad(desktop());
    const Accessible text = mousepad.focusedText();
    desktop().input().chord({XK_Control_L, XK_v});
    waitUntil([&] { return text.text() == QStringLiteral("pasted"); },
              QStringLiteral("the editor has pasted"));
    desktop().input().chord({XK_Control_L, XK_a});
    desktop().input().chord({XK_Control_L, XK_c});
    waitUntil([&] { return !owner->ownsSelection(); }, QStringLiteral("the editor has copied"));
    EXPECT_EQ(WaylandClipboardProbe(desktop().socketPath()).text(), QStringLiteral("pasted"));
}

INSTANTIATE_TEST_SUITE_P(On, WaylandClipboardTest, everyCompositor(), compositorName);

} // namespace
} // namespace quillmender::harness
