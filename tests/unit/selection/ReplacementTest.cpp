#include "SelectionFixture.h"
#include "selection/UncertainReplacement.h"

namespace quillmender {
namespace {

class ReplacementTest : public SelectionFixture {
  protected:
    bool replace(const SelectionSessionRef &session, const QString &text) {
        return fakes::await(controller.replaceViaAccessibility(session, text));
    }
    void paste(const SelectionSessionRef &session, const QString &text) {
        fakes::await(controller.performPasteReplacement(session, text));
    }
};

TEST_F(ReplacementTest, ReplacesTheCapturedRange) {
    EXPECT_TRUE(replace(session(TextRange{5, 3}), QStringLiteral(" 0123456789\n")));
    EXPECT_EQ(*log, QStringList({QStringLiteral("focus.replace 5+3  0123456789\n")}));
}

TEST_F(ReplacementTest, NeedsAnElementAndARange) {
    EXPECT_FALSE(replace(session(std::nullopt), QStringLiteral("new")));
    EXPECT_FALSE(replace(session(TextRange{0, 4}, false), QStringLiteral("new")));
    EXPECT_TRUE(log->isEmpty());
}

TEST_F(ReplacementTest, ARefusalIsNoReplacementAndIsLogged) {
    focus.replacement = {Replacement::Outcome::refused, QStringLiteral("it is read only")};
    const fakes::LogLines lines("quillmender.session");
    EXPECT_FALSE(replace(session(TextRange{0, 4}), QStringLiteral("new")));
    EXPECT_TRUE(lines.contain(QStringLiteral("it is read only")));
    EXPECT_FALSE(lines.contain(QStringLiteral("new")));
}

TEST_F(ReplacementTest, AnOrderOfUnknownOutcomeIsFollowedByNothing) {
    focus.replacement = {Replacement::Outcome::uncertain, QStringLiteral("no answer")};
    EXPECT_THROW(replace(session(TextRange{0, 4}), QStringLiteral("new")), UncertainReplacement);
    EXPECT_EQ(*log, QStringList({QStringLiteral("focus.replace 0+4 new")}));
}

TEST_F(ReplacementTest, TheUserReadsThatTheOutcomeIsNoReplacement) {
    EXPECT_EQ(UncertainReplacement().errorDescription(),
              AppFailure::replacementFailed().errorDescription());
}

TEST_F(ReplacementTest, WritesACopiedSelectionThroughAccessibility) {
    focus.rangeAfterCopy = TextRange{0, 1};
    copyYields(QStringLiteral("copied"));
    EXPECT_TRUE(replace(capture(), QStringLiteral("new")));
}

TEST_F(ReplacementTest, PastesInTheFixedOrder) {
    paste(session(std::nullopt), QStringLiteral("answer"));
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("pasteboard.lend answer"),
                        QStringLiteral("activate source"),
                        QStringLiteral("sleep 120"),
                        QStringLiteral("type paste"),
                        QStringLiteral("sleep 160"),
                        QStringLiteral("lent.wasRead 840"),
                        QStringLiteral("pasteboard.replaceContents 2"),
                    }));
    EXPECT_EQ(pasteboard.contents, twoItems());
    EXPECT_GT(pasteboard.count, 7);
}

TEST_F(ReplacementTest, SelectsTheCapturedRangeAgainBeforeThePaste) {
    paste(session(TextRange{0, 9}), QStringLiteral("answer"));
    EXPECT_LT(log->indexOf(QStringLiteral("sleep 120")),
              log->indexOf(QStringLiteral("focus.select 0+9")));
    EXPECT_LT(log->indexOf(QStringLiteral("focus.select 0+9")),
              log->indexOf(QStringLiteral("type paste")));
}

TEST_F(ReplacementTest, IsNotPastedBesideTheCapturedText) {
    const auto ends = [this](CaptureScope scope, PasteTarget target) {
        const auto made = std::make_shared<SelectionSession>(*session(TextRange{0, 9}));
        made->captureScope = scope;
        focus.pasteTarget = target;
        log->clear();
        try {
            paste(made, QStringLiteral("answer"));
        } catch (const AppFailure &) {
            EXPECT_FALSE(log->contains(QStringLiteral("type paste")));
            EXPECT_EQ(pasteboard.contents, twoItems());
            return false;
        }
        return true;
    };
    EXPECT_TRUE(ends(CaptureScope::selection, PasteTarget::selected));
    EXPECT_TRUE(ends(CaptureScope::selection, PasteTarget::unknown));
    EXPECT_FALSE(ends(CaptureScope::selection, PasteTarget::another));
    EXPECT_TRUE(ends(CaptureScope::fullField, PasteTarget::selected));
    EXPECT_TRUE(ends(CaptureScope::selection, PasteTarget::gone));
    EXPECT_TRUE(ends(CaptureScope::fullField, PasteTarget::gone));
    EXPECT_FALSE(ends(CaptureScope::fullField, PasteTarget::unknown));
    EXPECT_FALSE(ends(CaptureScope::fullField, PasteTarget::another));
}

TEST_F(ReplacementTest, AFailedPasteRestoresFirst) {
    const auto expectFailure = [this](const char *why) {
        pasteboard.contents.clear();
        log->clear();
        try {
            paste(session(std::nullopt), QStringLiteral("answer"));
            ADD_FAILURE() << why;
        } catch (const AppFailure &failure) {
            EXPECT_EQ(failure.failureCase(), AppFailure::Case::replacementFailed) << why;
        }
        EXPECT_EQ(pasteboard.contents, twoItems()) << why;
        EXPECT_EQ(log->count(QStringLiteral("pasteboard.replaceContents 2")), 1) << why;
    };
    for (const auto outcome : {ChordResult::Outcome::unavailable, ChordResult::Outcome::withheld}) {
        chords.result = {outcome, QStringLiteral("no keys")};
        expectFailure("no chord");
        EXPECT_FALSE(log->contains(QStringLiteral("sleep 160")));
    }
    chords.result = {ChordResult::Outcome::typed};
    pasteboard.isLentTextRead = false;
    expectFailure("the source hangs or has no use for it");
    pasteboard.isLentTextRead = true;
    clock.cancelledSleep = clock.sleeps + 1;
    expectFailure("first sleep cancelled");
    clock.cancelledSleep = clock.sleeps + 2;
    expectFailure("second sleep cancelled");
}

TEST_F(ReplacementTest, WhatThePasteboardDoesNotTakeIsNotPasted) {
    pasteboard.acceptsWrites = false;
    EXPECT_THROW(paste(session(std::nullopt), QStringLiteral("answer")), AppFailure);
    EXPECT_EQ(chords.targets.size(), 0) << "somebody else's contents would be pasted";
}

TEST_F(ReplacementTest, TheReasonOfAPasteThatFailsIsLogged) {
    const fakes::LogLines lines("quillmender.session");
    chords.result = {ChordResult::Outcome::withheld, QStringLiteral("not in front")};
    EXPECT_THROW(paste(session(std::nullopt), QStringLiteral("answer")), AppFailure);
    EXPECT_TRUE(lines.contain(QStringLiteral("not pasted: not in front")));
    EXPECT_FALSE(lines.contain(QStringLiteral("answer")));
}

TEST_F(ReplacementTest, CancelledAfterTheChordRestoresOnlyOnceTheTextWasRead) {
    clock.cancelledSleep = 2;
    EXPECT_THROW(paste(session(std::nullopt), QStringLiteral("answer")), AppFailure);
    const auto read = log->indexOf(QStringLiteral("lent.wasRead 840"));
    ASSERT_GE(read, 0);
    EXPECT_EQ(log->indexOf(QStringLiteral("pasteboard.replaceContents 2")), read + 1);
}

TEST_F(ReplacementTest, TakesTheSnapshotOfASlowOwnerBeforeItBorrows) {
    const auto made = std::make_shared<SelectionSession>(*session(std::nullopt));
    made->originalPasteboard = {.changeCount = 7, .items = {}, .isComplete = false};
    paste(made, QStringLiteral("answer"));
    EXPECT_EQ(log->mid(0, 3), QStringList({
                                  QStringLiteral("pasteboard.items"),
                                  QStringLiteral("pasteboard.changeCount"),
                                  QStringLiteral("pasteboard.lend answer"),
                              }));
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(ReplacementTest, AnythingThatGoesWrongRestores) {
    pasteboard.failure = std::make_exception_ptr(std::runtime_error("lost"));
    EXPECT_THROW(paste(session(std::nullopt), QStringLiteral("answer")), AppFailure);
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(ReplacementTest, TheChordIsOfItsOwnSession) {
    const auto made = std::make_shared<SelectionSession>(*session(std::nullopt));
    made->sourceApp = std::make_shared<const RunningApplication>();
    made->chordContext = std::make_shared<const ChordContext>();
    paste(made, QStringLiteral("answer"));
    ASSERT_EQ(chords.targets.size(), 1);
    const ChordTarget &target = chords.targets.constFirst();
    EXPECT_EQ(target.application, made->sourceApp);
    EXPECT_EQ(target.context, made->chordContext);
    EXPECT_NE(target.text, nullptr);
    EXPECT_EQ(pasteboard.readers, QList<RunningApplicationRef>{made->sourceApp});
}

TEST_F(ReplacementTest, RestoresOverWhatAnotherApplicationPutThere) {
    clock.duringSleep = [this](int) { pasteboard.copyFromElsewhere(QStringLiteral("intruder")); };
    paste(session(std::nullopt), QStringLiteral("answer"));
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(ReplacementTest, TheAnswerIsPastedAsItIs) {
    paste(session(std::nullopt), QStringLiteral(" new\n"));
    EXPECT_TRUE(log->contains(QStringLiteral("pasteboard.lend  new\n")));
}

TEST_F(ReplacementTest, OnlyWhatWasAnElementWithARangeIsSelectedBeforeThePaste) {
    paste(session(TextRange{0, 9}, false), QStringLiteral("answer"));
    paste(session(std::nullopt, true), QStringLiteral("answer"));
    EXPECT_EQ(log->filter(QStringLiteral("focus.select")), QStringList());
}

} // namespace
} // namespace quillmender
