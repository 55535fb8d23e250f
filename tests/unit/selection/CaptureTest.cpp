#include "SelectionFixture.h"

namespace quillmender {
namespace {

class CaptureTest : public SelectionFixture {};

TEST_F(CaptureTest, readsTheSelectedTextInTheFixedOrder) {
    setText(QStringLiteral("  word \n"), QStringLiteral("a  word \nb"), TextRange{1, 8});
    const auto session = capture();
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("frontmostApplication"),
                        QStringLiteral("pasteboard.itemsWithin 1000"),
                        QStringLiteral("pasteboard.changeCount"),
                        QStringLiteral("createSystemWide"),
                        QStringLiteral("copy AXFocusedUIElement"),
                        QStringLiteral("copy AXSelectedText"),
                        QStringLiteral("copy AXSelectedTextRange"),
                    }));
    EXPECT_EQ(session->selectedText, QStringLiteral("word"));
    EXPECT_EQ(session->selectedRange, (TextRange{1, 8}));
    EXPECT_EQ(session->acquisitionMethod, SelectionAcquisitionMethod::accessibility);
    EXPECT_EQ(session->captureScope, CaptureScope::selection);
    EXPECT_EQ(session->originalPasteboard.items, twoItems());
    EXPECT_EQ(session->originalPasteboard.changeCount, 7);
    EXPECT_EQ(session->sourceApp, workspace.frontmost);
}

TEST_F(CaptureTest, withoutFrontmostApplicationTouchesNothing) {
    workspace.frontmost = nullptr;
    EXPECT_EQ(captureFailure(), AppFailure::Case::missingFrontmostApplication);
    EXPECT_EQ(*log, QStringList({QStringLiteral("frontmostApplication")}));
}

TEST_F(CaptureTest, takesTheWholeFieldUntrimmed) {
    setText(QString(), QStringLiteral("  hello  "));
    const auto session = capture();
    EXPECT_EQ(session->selectedText, QStringLiteral("  hello  "));
    EXPECT_EQ(session->selectedRange, (TextRange{0, 9}));
    EXPECT_EQ(session->captureScope, CaptureScope::fullField);
    EXPECT_EQ(session->acquisitionMethod, SelectionAcquisitionMethod::accessibility);
    EXPECT_FALSE(log->contains(QStringLiteral("copy AXSelectedTextRange")));
}

TEST_F(CaptureTest, countsUtf16Units) {
    setText(QString(), QStringLiteral("\U0001F642"));
    EXPECT_EQ(capture()->selectedRange, (TextRange{0, 2}));
}

TEST_F(CaptureTest, fallsThroughABlankSelectionToTheField) {
    setText(QStringLiteral(" \n\t"), QStringLiteral("text"), TextRange{0, 1});
    EXPECT_EQ(capture()->captureScope, CaptureScope::fullField);
}

TEST_F(CaptureTest, leavesTheRangeAbsentWhenItIsNotARange) {
    setText(QStringLiteral("word"), QStringLiteral("word"));
    accessibility.attributes[QStringLiteral("AXSelectedTextRange")] = QStringLiteral("0,4");
    EXPECT_EQ(capture()->selectedRange, std::nullopt);
}

TEST_F(CaptureTest, ignoresAttributesOfOtherTypes) {
    accessibility.attributes[QStringLiteral("AXSelectedText")] = TextRange{1, 2};
    accessibility.attributes[QStringLiteral("AXValue")] = std::monostate();
    copyYields(QStringLiteral("copied"));
    EXPECT_EQ(capture()->acquisitionMethod, SelectionAcquisitionMethod::clipboard);
}

TEST_F(CaptureTest, copiesThroughThePasteboardInTheFixedOrder) {
    accessibility.hasFocusedElement = false;
    copyYields(QStringLiteral(" copied "));
    const auto session = capture();
    EXPECT_EQ(log->mid(5), QStringList({
                               QStringLiteral("activate source"),
                               QStringLiteral("sleep 120"),
                               QStringLiteral("prepareChord copy"),
                               QStringLiteral("createSource 0"),
                               QStringLiteral("createEvent 8 down"),
                               QStringLiteral("createEvent 8 up"),
                               QStringLiteral("setFlags 8 down 0x100000"),
                               QStringLiteral("setFlags 8 up 0x100000"),
                               QStringLiteral("post 8 down tap 0"),
                               QStringLiteral("post 8 up tap 0"),
                               QStringLiteral("sleep 50"),
                               QStringLiteral("pasteboard.changeCount"),
                               QStringLiteral("pasteboard.string"),
                               QStringLiteral("pasteboard.clear"),
                               QStringLiteral("pasteboard.writeItems 2"),
                           }));
    EXPECT_EQ(session->selectedText, QStringLiteral("copied"));
    EXPECT_EQ(session->focusedElement, nullptr);
    EXPECT_EQ(session->selectedRange, std::nullopt);
    EXPECT_EQ(session->acquisitionMethod, SelectionAcquisitionMethod::clipboard);
    EXPECT_EQ(session->captureScope, CaptureScope::selection);
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(CaptureTest, aSlowOwnerOfThePasteboardIsWaitedForOnlyWhereItIsBorrowed) {
    pasteboard.isOwnerSlow = true;
    setText(QStringLiteral("word"), QStringLiteral("word"), TextRange{0, 4});
    EXPECT_FALSE(capture()->originalPasteboard.isComplete);
    EXPECT_FALSE(log->contains(QStringLiteral("pasteboard.items")));

    accessibility.hasFocusedElement = false;
    copyYields(QStringLiteral("copied"));
    log->clear();
    const auto session = capture();
    EXPECT_EQ(session->originalPasteboard.items, twoItems());
    EXPECT_LT(log->indexOf(QStringLiteral("pasteboard.items")),
              log->indexOf(QStringLiteral("prepareChord copy")));
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(CaptureTest, anElementOfAnotherApplicationCountsAsAbsent) {
    setText(QStringLiteral("of another"), QStringLiteral("of another"), TextRange{0, 10});
    accessibility.element->application = std::make_shared<const RunningApplication>();
    copyYields(QStringLiteral("copied"));
    const auto session = capture();
    EXPECT_EQ(session->selectedText, QStringLiteral("copied"));
    EXPECT_EQ(session->focusedElement, nullptr);
    EXPECT_EQ(session->chordContext, nullptr);
    EXPECT_FALSE(log->contains(QStringLiteral("copy AXSelectedText")));
}

TEST_F(CaptureTest, theFocusIsAskedForAgainWhenItWasElsewhere) {
    setText(QString(), QString(), TextRange{2, 6});
    accessibility.context = std::make_shared<const ChordContext>();
    accessibility.element->application = std::make_shared<const RunningApplication>();
    clock.duringSleep = [this](int) { accessibility.element->application = workspace.frontmost; };
    copyYields(QStringLiteral("copied"));
    const auto session = capture();
    const auto asked = log->lastIndexOf(QStringLiteral("copy AXFocusedUIElement"));
    EXPECT_GT(asked, log->indexOf(QStringLiteral("sleep 120")));
    EXPECT_LT(asked, log->indexOf(QStringLiteral("prepareChord copy")));
    EXPECT_EQ(keyEvents.contexts, QList<ChordContextRef>{accessibility.context});
    EXPECT_EQ(session->chordContext, accessibility.context);
    EXPECT_EQ(session->focusedElement, accessibility.element);
    EXPECT_EQ(session->selectedRange, (TextRange{2, 6}));
}

TEST_F(CaptureTest, aLaterCaptureKeepsAnEarlierOneFromCopying) {
    fakes::Gate gate;
    accessibility.gate = &gate;
    accessibility.hasFocusedElement = false;
    const auto first = std::make_shared<fakes::Outcome<SelectionSessionRef>>();
    fakes::collect(controller.captureSelection(), first);
    const auto second = std::make_shared<fakes::Outcome<SelectionSessionRef>>();
    fakes::collect(controller.captureSelection(), second);
    copyYields(QStringLiteral("copied"));
    gate.open();
    ASSERT_TRUE(first->isDone && second->isDone);
    EXPECT_THROW(std::rethrow_exception(first->error), CancellationError);
    ASSERT_FALSE(second->error);
    EXPECT_EQ((*second->value)->selectedText, QStringLiteral("copied"));
    EXPECT_EQ(log->count(QStringLiteral("prepareChord copy")), 1);
}

TEST_F(CaptureTest, whatHappenedToThePasteboardMeanwhileIsNoCopyAndIsNotUndone) {
    fakes::Gate gate;
    accessibility.gate = &gate;
    accessibility.hasFocusedElement = false;
    const auto outcome = std::make_shared<fakes::Outcome<SelectionSessionRef>>();
    fakes::collect(controller.captureSelection(), outcome);
    fakes::await(controller.performPasteReplacement(session(std::nullopt), QStringLiteral("x")));
    pasteboard.contents = {twoItems().last()};
    gate.open();
    ASSERT_TRUE(outcome->isDone);
    EXPECT_THROW(std::rethrow_exception(outcome->error), AppFailure);
    EXPECT_EQ(pasteboard.contents, QList<PasteboardItem>{twoItems().last()});
    EXPECT_FALSE(log->contains(QStringLiteral("pasteboard.string")));
}

TEST_F(CaptureTest, anythingThatGoesWrongAfterTheChordRestores) {
    accessibility.hasFocusedElement = false;
    copyYields(QStringLiteral("copied"));
    pasteboard.failure = std::make_exception_ptr(std::runtime_error("lost"));
    EXPECT_THROW(capture(), std::runtime_error);
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(CaptureTest, keepsElementAndRangeOfACopiedSelection) {
    setText(QString(), QStringLiteral("   "), TextRange{3, 6});
    copyYields(QStringLiteral("copied"));
    const auto session = capture();
    EXPECT_NE(session->focusedElement, nullptr);
    EXPECT_EQ(session->selectedRange, (TextRange{3, 6}));
    EXPECT_EQ(log->last(), QStringLiteral("copy AXSelectedTextRange"));
}

TEST_F(CaptureTest, pollsSixTimesForACopyThatNeverArrives) {
    accessibility.hasFocusedElement = false;
    EXPECT_EQ(captureFailure(), AppFailure::Case::noSelectionFound);
    EXPECT_EQ(log->count(QStringLiteral("sleep 50")), 6);
    EXPECT_FALSE(log->contains(QStringLiteral("pasteboard.string")));
    EXPECT_EQ(log->mid(log->size() - 2), QStringList({QStringLiteral("pasteboard.clear"),
                                                      QStringLiteral("pasteboard.writeItems 2")}));
}

TEST_F(CaptureTest, takesALowerChangeCountForAChange) {
    accessibility.hasFocusedElement = false;
    keyEvents.onPost = [this](quint16) {
        pasteboard.text = QStringLiteral("copied");
        pasteboard.count = 1;
    };
    EXPECT_EQ(capture()->selectedText, QStringLiteral("copied"));
}

TEST_F(CaptureTest, restoresAndFailsWhenTheCopyHoldsNoText) {
    accessibility.hasFocusedElement = false;
    copyYields(std::nullopt);
    pasteboard.text = QStringLiteral("something else");
    EXPECT_EQ(captureFailure(), AppFailure::Case::noSelectionFound);
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(CaptureTest, restoresAndFailsWhenTheCopyIsBlank) {
    accessibility.hasFocusedElement = false;
    copyYields(QStringLiteral(" \n"));
    EXPECT_EQ(captureFailure(), AppFailure::Case::noSelectionFound);
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(CaptureTest, aKeystrokeThatCannotBeMadeLeavesThePasteboardAlone) {
    accessibility.hasFocusedElement = false;
    for (bool *part : {&keyEvents.createsSource, &keyEvents.createsDown, &keyEvents.createsUp}) {
        *part = false;
        log->clear();
        EXPECT_EQ(captureFailure(), AppFailure::Case::replacementFailed);
        EXPECT_FALSE(log->contains(QStringLiteral("pasteboard.clear")));
        EXPECT_TRUE(log->filter(QStringLiteral("post")).filter(QStringLiteral("tap")).isEmpty());
        *part = true;
    }
}

TEST_F(CaptureTest, aWithheldChordIsNothingSelected) {
    accessibility.hasFocusedElement = false;
    keyEvents.readiness = ChordReadiness::withheld;
    EXPECT_EQ(captureFailure(), AppFailure::Case::noSelectionFound);
    EXPECT_EQ(log->last(), QStringLiteral("prepareChord copy"));
}

TEST_F(CaptureTest, cancellationBeforeTheChordTouchesNothing) {
    accessibility.hasFocusedElement = false;
    clock.cancelledSleep = 1;
    EXPECT_THROW(capture(), CancellationError);
    EXPECT_FALSE(log->contains(QStringLiteral("pasteboard.clear")));
}

TEST_F(CaptureTest, cancellationAfterTheChordRestores) {
    accessibility.hasFocusedElement = false;
    copyYields(QStringLiteral("copied"));
    clock.cancelledSleep = 2;
    EXPECT_THROW(capture(), CancellationError);
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(CaptureTest, aValueBesideAnErrorIsNone) {
    setText(QStringLiteral("word"), QStringLiteral("a word"), TextRange{2, 4});
    accessibility.errorsBeside[QStringLiteral("AXSelectedTextRange")] = AccessibilityError::failure;
    EXPECT_EQ(capture()->selectedRange, std::nullopt);

    accessibility.errorsBeside[QStringLiteral("AXSelectedText")] =
        AccessibilityError::cannotComplete;
    EXPECT_EQ(capture()->captureScope, CaptureScope::fullField);

    copyYields(QStringLiteral("copied"));
    accessibility.errorsBeside[QStringLiteral("AXValue")] = AccessibilityError::noValue;
    const auto copied = capture();
    EXPECT_EQ(copied->acquisitionMethod, SelectionAcquisitionMethod::clipboard);
    EXPECT_EQ(copied->selectedText, QStringLiteral("copied"));

    pasteboard.text.reset();
    accessibility.errorsBeside = {
        {QStringLiteral("AXFocusedUIElement"), AccessibilityError::failure}};
    const auto withoutElement = capture();
    EXPECT_EQ(withoutElement->focusedElement, nullptr);
    EXPECT_EQ(withoutElement->acquisitionMethod, SelectionAcquisitionMethod::clipboard);
}

TEST_F(CaptureTest, aSelectionIsTrimmedAtEachEndAndAFieldAtNone) {
    setText(QStringLiteral("\u00a0 a  b\t\u2028"), QString());
    EXPECT_EQ(capture()->selectedText, QStringLiteral("a  b"));
    accessibility.attributes.clear();
    setText(QString(), QStringLiteral("\n\u00a0a \t"));
    EXPECT_EQ(capture()->selectedText, QStringLiteral("\n\u00a0a \t"));
    EXPECT_EQ(capture()->selectedRange, (TextRange{0, 5}));
}

TEST_F(CaptureTest, aBlankFieldIsNoText) {
    setText(QString(), QStringLiteral("\u00a0 \n"));
    EXPECT_EQ(captureFailure(), AppFailure::Case::noSelectionFound);
    EXPECT_TRUE(log->contains(QStringLiteral("prepareChord copy")));
}

TEST_F(CaptureTest, theCopyIsLookedForUntilItComes) {
    accessibility.hasFocusedElement = false;
    clock.duringSleep = [this](int sleep) {
        if (sleep == 7)
            pasteboard.copyFromElsewhere(QStringLiteral("late"));
    };
    EXPECT_EQ(capture()->selectedText, QStringLiteral("late")) << "the last of six times";
    EXPECT_EQ(log->count(QStringLiteral("sleep 50")), 6);
}

TEST_F(CaptureTest, theKeysGoDownAndUpOnceEach) {
    accessibility.hasFocusedElement = false;
    copyYields(QStringLiteral("copied"));
    capture();
    EXPECT_EQ(log->filter(QStringLiteral("tap")), QStringList({QStringLiteral("post 8 down tap 0"),
                                                               QStringLiteral("post 8 up tap 0")}));
}

} // namespace
} // namespace quillmender
