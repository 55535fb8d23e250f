#include "SelectionTest.h"

namespace quillmender {
namespace {

class ReplacementTest : public SelectionTest {
  protected:
    SelectionSessionRef captured() {
        auto session = capture();
        log->clear();
        return session;
    }
    bool replace(const SelectionSessionRef &session, const QString &text) {
        return fakes::await(controller.replaceViaAccessibility(session, text));
    }
    void paste(const SelectionSessionRef &session) {
        fakes::await(controller.performPasteReplacement(session, QStringLiteral("answer")));
    }

    const QString readValue = QStringLiteral("AXUIElementCopyAttributeValue editor AXValue");
};

TEST_F(ReplacementTest, rewritesTheValueAndSelectsWhatItInserted) {
    setText(u"abcdeXYZfgh", CFRangeMake(5, 3));
    EXPECT_TRUE(replace(captured(), QStringLiteral("0123456789")));
    EXPECT_EQ(*log,
              QStringList({
                  readValue,
                  QStringLiteral("AXUIElementSetAttributeValue editor AXValue abcde0123456789fgh"),
                  QStringLiteral(
                      "AXUIElementSetAttributeValue editor AXSelectedTextRange 5+10 of type 4"),
              }));
    EXPECT_EQ(value(), "abcde0123456789fgh");
}

TEST_F(ReplacementTest, writesNothingWithoutElementOrRange) {
    setText(u"word", CFRangeMake(0, 4));
    editor->failReading("AXSelectedTextRange", kAXErrorNoValue);
    EXPECT_FALSE(replace(captured(), QStringLiteral("new")));
    EXPECT_TRUE(log->isEmpty());
}

TEST_F(ReplacementTest, writesNothingWithoutAReadableValue) {
    setText(u"word", CFRangeMake(0, 4));
    const auto session = captured();
    editor->failReading("AXValue", kAXErrorInvalidUIElement);
    EXPECT_FALSE(replace(session, QStringLiteral("new")));
    EXPECT_EQ(*log, QStringList({readValue}));
}

TEST_F(ReplacementTest, writesNothingWhenTheRangeNoLongerFits) {
    setText(u"long enough", CFRangeMake(5, 6));
    const auto session = captured();
    setText(u"short");
    EXPECT_FALSE(replace(session, QStringLiteral("new")));
    EXPECT_EQ(value(), "short");
}

TEST_F(ReplacementTest, aRefusedValueSelectsNothing) {
    setText(u"word", CFRangeMake(0, 4));
    editor->failWriting("AXValue", kAXErrorFailure);
    EXPECT_FALSE(replace(captured(), QStringLiteral("new")));
    EXPECT_EQ(log->last(), QStringLiteral("AXUIElementSetAttributeValue editor AXValue new"));
}

TEST_F(ReplacementTest, aRefusedSelectionStillCounts) {
    setText(u"word", CFRangeMake(0, 4));
    editor->failWriting("AXSelectedTextRange", kAXErrorFailure);
    EXPECT_TRUE(replace(captured(), QStringLiteral("new")));
}

TEST_F(ReplacementTest, aRangeThatCannotBeMadeStillCounts) {
    setText(u"word", CFRangeMake(0, 4));
    const auto session = captured();
    server.createsValues = false;
    EXPECT_TRUE(replace(session, QStringLiteral("new")));
    EXPECT_EQ(value(), "new");
    EXPECT_EQ(log->last(), QStringLiteral("AXValueCreate fails"));
}

TEST_F(ReplacementTest, pastesInTheFixedOrder) {
    setText(u"word", CFRangeMake(0, 4));
    paste(captured());
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("pasteboard.clear"),
                        QStringLiteral("pasteboard.setString answer"),
                        QStringLiteral("activate source"),
                        QStringLiteral("sleep 120"),
                        QStringLiteral("CGEventSourceCreate 0"),
                        QStringLiteral("CGEventCreateKeyboardEvent 9 down"),
                        QStringLiteral("CGEventCreateKeyboardEvent 9 up"),
                        QStringLiteral("CGEventSetFlags 9 down 0x100000"),
                        QStringLiteral("CGEventSetFlags 9 up 0x100000"),
                        QStringLiteral("CGEventPost 0 9 down 0x100000"),
                        QStringLiteral("CGEventPost 0 9 up 0x100000"),
                        QStringLiteral("sleep 160"),
                        QStringLiteral("pasteboard.stringWasRead 840"),
                        QStringLiteral("pasteboard.clear"),
                        QStringLiteral("pasteboard.writeItems 1"),
                    }));
}

TEST_F(ReplacementTest, aPasteWithoutKeyEventsFailsRestored) {
    setText(u"word", CFRangeMake(0, 4));
    const auto session = captured();
    for (bool *const creates : {&events.createsSources, &events.createsDown, &events.createsUp}) {
        *creates = false;
        EXPECT_EQ(failureOf([&] { paste(session); }), AppFailure::Case::replacementFailed);
        EXPECT_EQ(log->last(), QStringLiteral("pasteboard.writeItems 1"));
        log->clear();
        *creates = true;
    }
}

} // namespace
} // namespace quillmender
