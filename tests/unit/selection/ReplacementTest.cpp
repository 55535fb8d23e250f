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

TEST_F(ReplacementTest, rewritesTheValueAndSelectsWhatItInserted) {
    setText(QString(), QStringLiteral("abcdeXYZfgh"));
    EXPECT_TRUE(replace(session(TextRange{5, 3}), QStringLiteral("0123456789")));
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("copy AXValue"),
                        QStringLiteral("set AXValue abcde0123456789fgh"),
                        QStringLiteral("set AXSelectedTextRange 5+10"),
                    }));
}

TEST_F(ReplacementTest, needsAnElementAndARange) {
    setText(QString(), QStringLiteral("text"));
    EXPECT_FALSE(replace(session(std::nullopt), QStringLiteral("new")));
    EXPECT_FALSE(replace(session(TextRange{0, 4}, false), QStringLiteral("new")));
    EXPECT_TRUE(log->isEmpty());
}

TEST_F(ReplacementTest, needsAReadableValue) {
    EXPECT_FALSE(replace(session(TextRange{0, 4}), QStringLiteral("new")));
    EXPECT_EQ(*log, QStringList({QStringLiteral("copy AXValue")}));
}

TEST_F(ReplacementTest, refusesARangeThatNoLongerFits) {
    setText(QString(), QStringLiteral("short"));
    for (const TextRange range : {TextRange{3, 3}, TextRange{6, 0}, TextRange{-1, 2},
                                  TextRange{0, -1}, TextRange{2, 9223372036854775807}})
        EXPECT_FALSE(replace(session(range), QStringLiteral("new")));
    EXPECT_EQ(value(), QStringLiteral("short"));
}

TEST_F(ReplacementTest, refusesARangeThatSplitsACharacter) {
    // a, family emoji of 8 units, e with a combining acute, CR LF
    setText(QString(), QStringLiteral("a\U0001F469\u200D\U0001F467\u200D\U0001F466e\u0301\r\n"));
    for (const TextRange range :
         {TextRange{0, 2}, TextRange{2, 7}, TextRange{0, 4}, TextRange{9, 1}, TextRange{11, 1}})
        EXPECT_FALSE(replace(session(range), QStringLiteral("x"))) << range.location;
    EXPECT_TRUE(replace(session(TextRange{1, 8}), QStringLiteral("x")));
    EXPECT_EQ(value(), QStringLiteral("axe\u0301\r\n"));
}

TEST_F(ReplacementTest, findsBoundariesFarIntoAForeignScript) {
    const QString text = QStringLiteral("\u0915\u094D\u0937\u093F").repeated(5000);
    setText(QString(), text);
    EXPECT_FALSE(replace(session(TextRange{1, 4}), QStringLiteral("x")));
    EXPECT_TRUE(replace(session(TextRange{19'996, 4}), QStringLiteral("x")));
}

TEST_F(ReplacementTest, aRefusedValueIsNotFollowedByASelection) {
    setText(QString(), QStringLiteral("text"));
    accessibility.refusedAttributes = {QStringLiteral("AXValue")};
    EXPECT_FALSE(replace(session(TextRange{0, 4}), QStringLiteral("new")));
    EXPECT_EQ(log->last(), QStringLiteral("set AXValue new"));
}

TEST_F(ReplacementTest, anOrderOfUnknownOutcomeIsFollowedByNothing) {
    setText(QString(), QStringLiteral("text"));
    accessibility.refusedAttributes = {QStringLiteral("AXValue")};
    accessibility.refusal = AccessibilityError::cannotComplete;
    EXPECT_THROW(replace(session(TextRange{0, 4}), QStringLiteral("new")), UncertainReplacement);
    EXPECT_EQ(log->last(), QStringLiteral("set AXValue new"));
}

TEST_F(ReplacementTest, theUserReadsThatTheOutcomeIsNoReplacement) {
    EXPECT_EQ(UncertainReplacement().errorDescription(),
              AppFailure::replacementFailed().errorDescription());
}

TEST_F(ReplacementTest, aRefusedSelectionStillCounts) {
    setText(QString(), QStringLiteral("text"));
    accessibility.refusedAttributes = {QStringLiteral("AXSelectedTextRange")};
    EXPECT_TRUE(replace(session(TextRange{0, 4}), QStringLiteral("new")));
}

TEST_F(ReplacementTest, writesACopiedSelectionThroughAccessibility) {
    setText(QString(), QStringLiteral(" "), TextRange{0, 1});
    copyYields(QStringLiteral("copied"));
    const auto captured = capture();
    EXPECT_TRUE(replace(captured, QStringLiteral("new")));
}

TEST_F(ReplacementTest, pastesInTheFixedOrder) {
    paste(session(std::nullopt), QStringLiteral("answer"));
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("pasteboard.clear"),
                        QStringLiteral("pasteboard.setString answer"),
                        QStringLiteral("activate source"),
                        QStringLiteral("sleep 120"),
                        QStringLiteral("prepareChord paste"),
                        QStringLiteral("createSource 0"),
                        QStringLiteral("createEvent 9 down"),
                        QStringLiteral("createEvent 9 up"),
                        QStringLiteral("setFlags 9 down 0x100000"),
                        QStringLiteral("setFlags 9 up 0x100000"),
                        QStringLiteral("post 9 down tap 0"),
                        QStringLiteral("post 9 up tap 0"),
                        QStringLiteral("sleep 160"),
                        QStringLiteral("pasteboard.stringWasRead 840"),
                        QStringLiteral("pasteboard.clear"),
                        QStringLiteral("pasteboard.writeItems 2"),
                    }));
    EXPECT_EQ(pasteboard.contents, twoItems());
    EXPECT_GT(pasteboard.count, 7);
}

TEST_F(ReplacementTest, selectsTheCapturedRangeAgainBeforeThePaste) {
    paste(session(TextRange{0, 9}), QStringLiteral("answer"));
    EXPECT_LT(log->indexOf(QStringLiteral("sleep 120")),
              log->indexOf(QStringLiteral("selectBeforePaste 0+9")));
    EXPECT_LT(log->indexOf(QStringLiteral("selectBeforePaste 0+9")),
              log->indexOf(QStringLiteral("prepareChord paste")));
}

TEST_F(ReplacementTest, isNotPastedBesideTheCapturedText) {
    const auto ends = [this](CaptureScope scope, PasteTarget target) {
        const auto made = std::make_shared<SelectionSession>(*session(TextRange{0, 9}));
        made->captureScope = scope;
        accessibility.pasteTarget = target;
        log->clear();
        try {
            paste(made, QStringLiteral("answer"));
        } catch (const AppFailure &) {
            EXPECT_FALSE(log->contains(QStringLiteral("prepareChord paste")));
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

TEST_F(ReplacementTest, aFailedPasteRestoresFirst) {
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
        EXPECT_EQ(log->count(QStringLiteral("pasteboard.clear")), 2) << why;
    };
    keyEvents.createsSource = false;
    expectFailure("no source");
    keyEvents.createsSource = true;
    keyEvents.createsUp = false;
    expectFailure("no event");
    keyEvents.createsUp = true;
    keyEvents.readiness = ChordReadiness::withheld;
    expectFailure("withheld");
    keyEvents.readiness = ChordReadiness::ready;
    keyEvents.acceptsPosts = false;
    expectFailure("the source lost the focus");
    EXPECT_EQ(log->count(QStringLiteral("post 9 up tap 0")), 0);
    keyEvents.acceptsPosts = true;
    pasteboard.isStringRead = false;
    expectFailure("the source hangs or has no use for it");
    pasteboard.isStringRead = true;
    clock.cancelledSleep = clock.sleeps + 1;
    expectFailure("first sleep cancelled");
    clock.cancelledSleep = clock.sleeps + 2;
    expectFailure("second sleep cancelled");
}

TEST_F(ReplacementTest, cancelledAfterTheChordRestoresOnlyOnceTheTextWasRead) {
    clock.cancelledSleep = 2;
    EXPECT_THROW(paste(session(std::nullopt), QStringLiteral("answer")), AppFailure);
    const auto read = log->indexOf(QStringLiteral("pasteboard.stringWasRead 840"));
    ASSERT_GE(read, 0);
    EXPECT_EQ(log->lastIndexOf(QStringLiteral("pasteboard.clear")), read + 1);
}

TEST_F(ReplacementTest, takesTheSnapshotOfASlowOwnerBeforeItBorrows) {
    const auto made = std::make_shared<SelectionSession>(*session(std::nullopt));
    made->originalPasteboard = {.changeCount = 7, .items = {}, .isComplete = false};
    paste(made, QStringLiteral("answer"));
    EXPECT_EQ(log->mid(0, 4), QStringList({
                                  QStringLiteral("pasteboard.items"),
                                  QStringLiteral("pasteboard.changeCount"),
                                  QStringLiteral("pasteboard.clear"),
                                  QStringLiteral("pasteboard.setString answer"),
                              }));
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(ReplacementTest, anythingThatGoesWrongRestores) {
    pasteboard.failure = std::make_exception_ptr(std::runtime_error("lost"));
    EXPECT_THROW(paste(session(std::nullopt), QStringLiteral("answer")), AppFailure);
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(ReplacementTest, theChordIsOfItsOwnSession) {
    const auto made = std::make_shared<SelectionSession>(*session(std::nullopt));
    made->chordContext = std::make_shared<const ChordContext>();
    accessibility.context = std::make_shared<const ChordContext>();
    paste(made, QStringLiteral("answer"));
    EXPECT_EQ(keyEvents.contexts, QList<ChordContextRef>{made->chordContext});
}

TEST_F(ReplacementTest, restoresOverWhatAnotherApplicationPutThere) {
    clock.duringSleep = [this](int) { pasteboard.copyFromElsewhere(QStringLiteral("intruder")); };
    paste(session(std::nullopt), QStringLiteral("answer"));
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(ReplacementTest, aValueBesideAnErrorIsNone) {
    setText(QString(), QStringLiteral("text"));
    accessibility.errorsBeside[QStringLiteral("AXValue")] = AccessibilityError::cannotComplete;
    EXPECT_FALSE(replace(session(TextRange{0, 4}), QStringLiteral("new")));
    EXPECT_EQ(value(), QStringLiteral("text"));
    EXPECT_EQ(log->filter(QStringLiteral("set ")), QStringList());
}

TEST_F(ReplacementTest, onlyBothKeyEventsTogetherArePosted) {
    for (bool *part : {&keyEvents.createsDown, &keyEvents.createsUp}) {
        *part = false;
        log->clear();
        EXPECT_THROW(paste(session(std::nullopt), QStringLiteral("answer")), AppFailure);
        EXPECT_EQ(log->filter(QStringLiteral("setFlags")), QStringList());
        EXPECT_EQ(log->filter(QStringLiteral(" tap ")), QStringList());
        EXPECT_EQ(log->last(), QStringLiteral("pasteboard.writeItems 2"));
        *part = true;
    }
}

TEST_F(ReplacementTest, replacesTheRangeAndNothingElse) {
    const struct {
        TextRange range;
        const char *wanted;
    } cases[] = {{{0, 0}, "newone two"}, {{0, 3}, "new two"},    {{3, 1}, "onenewtwo"},
                 {{4, 3}, "one new"},    {{7, 0}, "one twonew"}, {{0, 7}, "new"}};
    for (const auto &each : cases) {
        setText(QString(), QStringLiteral("one two"));
        EXPECT_TRUE(replace(session(each.range), QStringLiteral("new")));
        EXPECT_EQ(value(), QLatin1String(each.wanted));
        EXPECT_EQ(std::get<TextRange>(
                      accessibility.attributes.value(QStringLiteral("AXSelectedTextRange"))),
                  (TextRange{each.range.location, 3}));
    }
}

TEST_F(ReplacementTest, theAnswerIsWrittenAndPastedAsItIs) {
    setText(QString(), QStringLiteral("text"));
    EXPECT_TRUE(replace(session(TextRange{0, 4}), QStringLiteral(" new\n")));
    EXPECT_EQ(value(), QStringLiteral(" new\n"));
    paste(session(std::nullopt), QStringLiteral(" new\n"));
    EXPECT_TRUE(log->contains(QStringLiteral("pasteboard.setString  new\n")));
}

TEST_F(ReplacementTest, onlyWhatWasAnElementWithARangeIsSelectedBeforeThePaste) {
    paste(session(TextRange{0, 9}, false), QStringLiteral("answer"));
    paste(session(std::nullopt, true), QStringLiteral("answer"));
    EXPECT_EQ(log->filter(QStringLiteral("selectBeforePaste")), QStringList());
}

} // namespace
} // namespace quillmender
