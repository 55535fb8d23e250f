#include "SelectionFixture.h"

namespace quillmender {
namespace {

class CaptureTest : public SelectionFixture {};

TEST_F(CaptureTest, ReadsTheSelectedTextInTheFixedOrder) {
    setText(QStringLiteral("  word \n"), QStringLiteral("a  word \nb"), TextRange{1, 8});
    const auto session = capture();
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("frontmostApplication"),
                        QStringLiteral("pasteboard.itemsWithin 1000"),
                        QStringLiteral("pasteboard.changeCount"),
                        QStringLiteral("focus.read"),
                    }));
    EXPECT_EQ(session->selectedText, QStringLiteral("word"));
    EXPECT_EQ(session->selectedRange, (TextRange{1, 8}));
    EXPECT_EQ(session->acquisitionMethod, SelectionAcquisitionMethod::accessibility);
    EXPECT_EQ(session->captureScope, CaptureScope::selection);
    EXPECT_EQ(session->originalPasteboard.items, twoItems());
    EXPECT_EQ(session->originalPasteboard.changeCount, 7);
    EXPECT_EQ(session->sourceApp, workspace.frontmost);
}

TEST_F(CaptureTest, WithoutFrontmostApplicationTouchesNothing) {
    workspace.frontmost = nullptr;
    EXPECT_EQ(captureFailure(), AppFailure::Case::missingFrontmostApplication);
    EXPECT_EQ(*log, QStringList({QStringLiteral("frontmostApplication"),
                                 QStringLiteral("focus.read of nobody known")}));
}

TEST_F(CaptureTest, TakesTheApplicationThatOnlyAccessibilityKnows) {
    const auto known = std::make_shared<const RunningApplication>();
    workspace.frontmost = nullptr;
    focus.reading.application = known;
    setText(QStringLiteral("word"), QString(), TextRange{0, 4});
    const auto session = capture();
    EXPECT_EQ(session->sourceApp, known);
    EXPECT_EQ(session->selectedText, QStringLiteral("word"));
    EXPECT_EQ(session->originalPasteboard.items, twoItems());
    EXPECT_EQ(log->count(QStringLiteral("focus.read of nobody known")), 1);
    EXPECT_FALSE(log->contains(QStringLiteral("focus.read"))) << "asked once";
}

TEST_F(CaptureTest, TakesTheWholeFieldUntrimmed) {
    setText(QString(), QStringLiteral("  hello  "));
    const auto session = capture();
    EXPECT_EQ(session->selectedText, QStringLiteral("  hello  "));
    EXPECT_EQ(session->selectedRange, (TextRange{0, 9}));
    EXPECT_EQ(session->captureScope, CaptureScope::fullField);
    EXPECT_EQ(session->acquisitionMethod, SelectionAcquisitionMethod::accessibility);
}

TEST_F(CaptureTest, CountsUtf16Units) {
    setText(QString(), QStringLiteral("\U0001F642"));
    EXPECT_EQ(capture()->selectedRange, (TextRange{0, 2}));
}

TEST_F(CaptureTest, LeavesTheRangeAbsentWhenNobodyTellsIt) {
    setText(QStringLiteral("word"), QString());
    EXPECT_EQ(capture()->selectedRange, std::nullopt);
}

TEST_F(CaptureTest, CopiesThroughThePasteboardInTheFixedOrder) {
    focus.reading.element = nullptr;
    copyYields(QStringLiteral(" copied "));
    const auto session = capture();
    EXPECT_EQ(log->mid(4), QStringList({
                               QStringLiteral("activate source"),
                               QStringLiteral("sleep 120"),
                               QStringLiteral("type copy"),
                               QStringLiteral("sleep 50"),
                               QStringLiteral("pasteboard.changeCount"),
                               QStringLiteral("pasteboard.string"),
                               QStringLiteral("pasteboard.replaceContents 2"),
                           }));
    EXPECT_EQ(session->selectedText, QStringLiteral("copied"));
    EXPECT_EQ(session->focusedElement, nullptr);
    EXPECT_EQ(session->selectedRange, std::nullopt);
    EXPECT_EQ(session->acquisitionMethod, SelectionAcquisitionMethod::clipboard);
    EXPECT_EQ(session->captureScope, CaptureScope::selection);
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(CaptureTest, MakesWayForTheCopyAloneAndUntilItHasBeenRead) {
    const auto makeWay = [log = log]() -> std::shared_ptr<void> {
        log->append(QStringLiteral("make way"));
        return {nullptr, [log](std::nullptr_t) { log->append(QStringLiteral("come back")); }};
    };
    setText(QStringLiteral("word"), QString(), TextRange{0, 4});
    fakes::await(controller.captureSelection(makeWay));
    EXPECT_FALSE(log->contains(QStringLiteral("make way"))) << "accessibility needs no focus";

    log->clear();
    focus.reading = {};
    copyYields(QStringLiteral("copied"));
    fakes::await(controller.captureSelection(makeWay));
    EXPECT_EQ(log->indexOf(QStringLiteral("make way")) + 1,
              log->indexOf(QStringLiteral("activate source")));
    EXPECT_EQ(log->last(2), QStringList({QStringLiteral("pasteboard.replaceContents 2"),
                                         QStringLiteral("come back")}));
}

TEST_F(CaptureTest, ComesBackWhenNothingWasCopied) {
    const auto makeWay = [log = log]() -> std::shared_ptr<void> {
        return {nullptr, [log](std::nullptr_t) { log->append(QStringLiteral("come back")); }};
    };
    focus.reading = {};
    chords.result.outcome = ChordResult::Outcome::unavailable;
    EXPECT_THROW(fakes::await(controller.captureSelection(makeWay)), AppFailure);
    EXPECT_EQ(log->last(), QStringLiteral("come back"));
}

TEST_F(CaptureTest, ASlowOwnerOfThePasteboardIsWaitedForOnlyWhereItIsBorrowed) {
    pasteboard.isOwnerSlow = true;
    setText(QStringLiteral("word"), QStringLiteral("word"), TextRange{0, 4});
    EXPECT_FALSE(capture()->originalPasteboard.isComplete);
    EXPECT_FALSE(log->contains(QStringLiteral("pasteboard.items")));

    focus.reading = {};
    copyYields(QStringLiteral("copied"));
    log->clear();
    const auto session = capture();
    EXPECT_EQ(session->originalPasteboard.items, twoItems());
    EXPECT_LT(log->indexOf(QStringLiteral("pasteboard.items")),
              log->indexOf(QStringLiteral("type copy")));
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(CaptureTest, TheFocusIsAskedForAgainWhenItWasElsewhere) {
    const FocusReading there{.element = std::make_shared<const FocusedElement>(),
                             .chordContext = std::make_shared<const ChordContext>()};
    focus.reading = {.isElsewhere = true};
    focus.rangeAfterCopy = TextRange{2, 6};
    clock.duringSleep = [&](int) { focus.reading = there; };
    copyYields(QStringLiteral("copied"));
    const auto session = capture();
    const auto asked = log->lastIndexOf(QStringLiteral("focus.read"));
    EXPECT_GT(asked, log->indexOf(QStringLiteral("sleep 120")));
    EXPECT_LT(asked, log->indexOf(QStringLiteral("type copy")));
    ASSERT_EQ(chords.targets.size(), 1);
    EXPECT_EQ(chords.targets.constFirst().context, there.chordContext);
    EXPECT_EQ(session->chordContext, there.chordContext);
    EXPECT_EQ(session->focusedElement, there.element);
    EXPECT_EQ(session->selectedRange, (TextRange{2, 6}));
}

TEST_F(CaptureTest, TheFocusIsAskedForOnceWhereItIs) {
    copyYields(QStringLiteral("copied"));
    capture();
    EXPECT_EQ(log->count(QStringLiteral("focus.read")), 1);
}

TEST_F(CaptureTest, TheChordGoesToTheSourceAndTakesNoText) {
    focus.reading.chordContext = std::make_shared<const ChordContext>();
    copyYields(QStringLiteral("copied"));
    capture();
    ASSERT_EQ(chords.targets.size(), 1);
    EXPECT_EQ(chords.targets.constFirst().application, workspace.frontmost);
    EXPECT_EQ(chords.targets.constFirst().context, focus.reading.chordContext);
    EXPECT_EQ(chords.targets.constFirst().text, nullptr);
}

TEST_F(CaptureTest, ALaterCaptureKeepsAnEarlierOneFromCopying) {
    fakes::Gate gate;
    focus.gate = &gate;
    focus.reading.element = nullptr;
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
    EXPECT_EQ(log->count(QStringLiteral("type copy")), 1);
}

TEST_F(CaptureTest, WhatHappenedToThePasteboardMeanwhileIsNoCopyAndIsNotUndone) {
    fakes::Gate gate;
    focus.gate = &gate;
    focus.reading.element = nullptr;
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

TEST_F(CaptureTest, AnythingThatGoesWrongAfterTheChordRestores) {
    focus.reading.element = nullptr;
    copyYields(QStringLiteral("copied"));
    pasteboard.failure = std::make_exception_ptr(std::runtime_error("lost"));
    EXPECT_THROW(capture(), std::runtime_error);
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(CaptureTest, KeepsElementAndRangeOfACopiedSelection) {
    focus.rangeAfterCopy = TextRange{3, 6};
    copyYields(QStringLiteral("copied"));
    const auto session = capture();
    EXPECT_EQ(session->focusedElement, focus.reading.element);
    EXPECT_EQ(session->selectedRange, (TextRange{3, 6}));
    EXPECT_EQ(log->last(), QStringLiteral("focus.selectedRange"));
}

TEST_F(CaptureTest, PollsSixTimesForACopyThatNeverArrives) {
    focus.reading.element = nullptr;
    EXPECT_EQ(captureFailure(), AppFailure::Case::noSelectionFound);
    EXPECT_EQ(log->count(QStringLiteral("sleep 50")), 6);
    EXPECT_FALSE(log->contains(QStringLiteral("pasteboard.string")));
    EXPECT_EQ(log->last(), QStringLiteral("pasteboard.replaceContents 2"));
}

TEST_F(CaptureTest, TakesALowerChangeCountForAChange) {
    focus.reading.element = nullptr;
    chords.onTyped = [this](Chord) {
        pasteboard.text = QStringLiteral("copied");
        pasteboard.count = 1;
    };
    EXPECT_EQ(capture()->selectedText, QStringLiteral("copied"));
}

TEST_F(CaptureTest, RestoresAndFailsWhenTheCopyHoldsNoText) {
    focus.reading.element = nullptr;
    copyYields(std::nullopt);
    pasteboard.text = QStringLiteral("something else");
    EXPECT_EQ(captureFailure(), AppFailure::Case::noSelectionFound);
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(CaptureTest, RestoresAndFailsWhenTheCopyIsBlank) {
    focus.reading.element = nullptr;
    copyYields(QStringLiteral(" \n"));
    EXPECT_EQ(captureFailure(), AppFailure::Case::noSelectionFound);
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(CaptureTest, AKeystrokeThatCannotBeMadeLeavesThePasteboardAlone) {
    focus.reading.element = nullptr;
    chords.result = {ChordResult::Outcome::unavailable, QStringLiteral("no keys")};
    EXPECT_EQ(captureFailure(), AppFailure::Case::replacementFailed);
    EXPECT_EQ(log->last(), QStringLiteral("type copy"));
}

TEST_F(CaptureTest, AWithheldChordIsNothingSelected) {
    focus.reading.element = nullptr;
    chords.result = {ChordResult::Outcome::withheld, QStringLiteral("a terminal")};
    EXPECT_EQ(captureFailure(), AppFailure::Case::noSelectionFound);
    EXPECT_EQ(log->last(), QStringLiteral("type copy"));
}

TEST_F(CaptureTest, CancellationBeforeTheChordTouchesNothing) {
    focus.reading.element = nullptr;
    clock.cancelledSleep = 1;
    EXPECT_THROW(capture(), CancellationError);
    EXPECT_FALSE(log->contains(QStringLiteral("pasteboard.replaceContents 2")));
}

TEST_F(CaptureTest, CancellationAfterTheChordRestores) {
    focus.reading.element = nullptr;
    copyYields(QStringLiteral("copied"));
    clock.cancelledSleep = 2;
    EXPECT_THROW(capture(), CancellationError);
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(CaptureTest, ASelectionIsTrimmedAtEachEndAndAFieldAtNone) {
    setText(QStringLiteral("\u00a0 a  b\t\u2028"), QString());
    EXPECT_EQ(capture()->selectedText, QStringLiteral("a  b"));
    focus.reading.selectedText.reset();
    setText(QString(), QStringLiteral("\n\u00a0a \t"));
    EXPECT_EQ(capture()->selectedText, QStringLiteral("\n\u00a0a \t"));
    EXPECT_EQ(capture()->selectedRange, (TextRange{0, 5}));
}

TEST_F(CaptureTest, TheCopyIsLookedForUntilItComes) {
    focus.reading.element = nullptr;
    clock.duringSleep = [this](int sleep) {
        if (sleep == 7)
            pasteboard.copyFromElsewhere(QStringLiteral("late"));
    };
    EXPECT_EQ(capture()->selectedText, QStringLiteral("late")) << "the last of six times";
    EXPECT_EQ(log->count(QStringLiteral("sleep 50")), 6);
}

TEST_F(CaptureTest, TheReasonOfARefusalIsLogged) {
    focus.reading.element = nullptr;
    chords.result = {ChordResult::Outcome::withheld, QStringLiteral("not in front")};
    const fakes::LogLines lines("quillmender.session");
    captureFailure();
    EXPECT_TRUE(lines.contain(QStringLiteral("not copied: not in front")));
}

} // namespace
} // namespace quillmender
