#include "desktop/stalls/SessionRecord.h"

#include "desktop/stalls/PanelReader.h"
#include "desktop/stalls/SessionPlan.h"

#include <gmock/gmock.h>

namespace quillmender {
namespace {

using testing::IsEmpty;
using testing::Not;

SessionRecord replacedOnce() {
    SessionRecord record;
    record.textBefore = QStringLiteral("old");
    record.textAfter = QStringLiteral("new");
    record.replaced = QStringLiteral("new");
    record.requests = 1;
    record.clipboardBefore.representations = {{"STRING", "STRING", 8, "copied"}};
    record.clipboardAfter = record.clipboardBefore;
    return record;
}

SessionRecord notReplaced() {
    SessionRecord record = replacedOnce();
    record.textAfter = record.textBefore;
    record.message = message::notReplaced;
    return record;
}

SessionRecord notCaptured() {
    SessionRecord record = notReplaced();
    record.replaced.reset();
    record.requests = 0;
    record.message = message::nothingSelected;
    return record;
}

TEST(SessionRecordTest, WhatMayComeOfASession) {
    EXPECT_THAT(problemsOf(replacedOnce()), IsEmpty());
    EXPECT_THAT(problemsOf(notReplaced()), IsEmpty());
    EXPECT_THAT(problemsOf(notCaptured()), IsEmpty());
}

TEST(SessionRecordTest, TheTextIsReplacedOnceOrNotAtAll) {
    for (const char *text : {"newnew", "newold", "", "copied"}) {
        SessionRecord record = replacedOnce();
        record.textAfter = QString::fromLatin1(text);
        EXPECT_THAT(problemsOf(record), Not(IsEmpty())) << text;
        record.message = message::notReplaced;
        EXPECT_THAT(problemsOf(record), Not(IsEmpty())) << text;
    }
    SessionRecord record = notCaptured();
    record.textAfter = QStringLiteral("new");
    EXPECT_THAT(problemsOf(record), Not(IsEmpty()));
}

TEST(SessionRecordTest, WhatIsToldIsTrue) {
    SessionRecord claimed = notReplaced();
    claimed.message.reset();
    EXPECT_THAT(problemsOf(claimed), Not(IsEmpty()));
    SessionRecord denied = replacedOnce();
    denied.message = message::notReplaced;
    EXPECT_THAT(problemsOf(denied), Not(IsEmpty()));
}

TEST(SessionRecordTest, TheMessageFits) {
    SessionRecord record = notReplaced();
    record.message = message::nothingSelected;
    EXPECT_THAT(problemsOf(record), Not(IsEmpty()));
    record = notCaptured();
    record.message = message::noKey;
    EXPECT_THAT(problemsOf(record), Not(IsEmpty()));
    record.isKeyringStalled = true;
    EXPECT_THAT(problemsOf(record), IsEmpty());
    record.message = message::noAccess;
    EXPECT_THAT(problemsOf(record), Not(IsEmpty()));
}

TEST(SessionRecordTest, EverythingElseIsAsItWas) {
    SessionRecord clipboard = replacedOnce();
    clipboard.clipboardAfter.representations.first().bytes = "Copied";
    EXPECT_THAT(problemsOf(clipboard), Not(IsEmpty()));
    SessionRecord elsewhere = replacedOnce();
    elsewhere.otherTexts = QStringList{QStringLiteral("new")};
    EXPECT_THAT(problemsOf(elsewhere), Not(IsEmpty()));
    SessionRecord twice = replacedOnce();
    twice.requests = 2;
    EXPECT_THAT(problemsOf(twice), Not(IsEmpty()));
    SessionRecord dead = replacedOnce();
    dead.isAlive = false;
    EXPECT_THAT(problemsOf(dead), Not(IsEmpty()));
}

TEST(SessionRecordTest, ABusyMachineIsNotAHungProgram) {
    SessionRecord record = replacedOnce();
    record.longestWaitMs = 900;
    EXPECT_THAT(problemsOf(record), Not(IsEmpty()));
    record.longestWaitOfBystanderMs = 100;
    EXPECT_THAT(problemsOf(record), IsEmpty());
}

TEST(SessionPlanTest, IsWhatItsTextSays) {
    for (int number = 0; number < 2000; ++number) {
        const QString plan = SessionPlan::draw(7, number).toString();
        EXPECT_EQ(SessionPlan::fromString(plan).toString(), plan);
    }
}

TEST(SessionPlanTest, IsTheSameForTheSameSeed) {
    EXPECT_EQ(SessionPlan::draw(7, 3).toString(), SessionPlan::draw(7, 3).toString());
    EXPECT_NE(SessionPlan::draw(7, 3).toString(), SessionPlan::draw(7, 4).toString());
    EXPECT_NE(SessionPlan::draw(7, 3).toString(), SessionPlan::draw(8, 3).toString());
}

TEST(SessionPlanTest, EverythingIsDrawnInAFewHundredSessions) {
    QString all;
    for (int number = 0; number < 500; ++number)
        all += SessionPlan::draw(7, number).toString() + u'\n';
    for (const char *part : {"onBus",
                             "offBus",
                             "mousepad",
                             "plainEdit",
                             "lineEdit",
                             "isKept",
                             "isText",
                             "isRich",
                             "isLarge",
                             "field",
                             "elsewhere",
                             "fresh",
                             "editor@DeleteText#1=hangs:",
                             "editor@InsertText#1=hangs:",
                             "=hangsAfterwards:",
                             "=answersLate:",
                             "=actsLate:",
                             "=answersTwice:",
                             "=fails:",
                             "=talksNonsense:",
                             "=keepsSilent:",
                             "editor@hotKey=isStopped",
                             "windowManager@requested=isStopped:",
                             "clipboard@TARGETS=isLate:",
                             "keyring@started=isStopped:",
                             "provider@middle=isLate:"})
        EXPECT_TRUE(all.contains(QString::fromLatin1(part))) << part;
}

} // namespace
} // namespace quillmender
