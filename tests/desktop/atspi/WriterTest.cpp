#include "desktop/atspi/AtspiTest.h"
#include "desktop/atspi/ScriptedField.h"
#include "desktop/harness/AccessibilityBus.h"

#include <QCoroTask>
#include <gmock/gmock.h>

namespace quillmender::atspi {
namespace {

using harness::waitUntil;
using testing::ElementsAre;
using Outcome = Replacement::Outcome;

const QString oldText = QStringLiteral("one two three");
const QString newText = QStringLiteral("one zwei three");

class WriterTest : public harness::DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        harness::Desktop::Options options;
        options.windowManager = false;
        options.keyring = false;
        startDesktop(options);
        field = std::make_unique<ScriptedField>(desktop().accessibilityBus()->address(), oldText);
        bus = std::make_unique<AtspiBus>(desktop().sessionBus().connection());
        waitUntil([this] { return bus->isConnected(); }, QStringLiteral("the bus is there"));
        reader = std::make_unique<TextReader>(*bus);
        writer = std::make_unique<TextWriter>(*bus, *reader);
    }

    TextElementRef element(QList<uint> states = {1U << 7, 0}, Toolkit toolkit = Toolkit::qt) {
        ElementTraits traits;
        traits.object = {field->service(), ScriptedField::path()};
        traits.role = 61;
        traits.states = StateSet(states);
        traits.interfaces = {QStringLiteral("org.a11y.atspi.Text"),
                             QStringLiteral("org.a11y.atspi.EditableText")};
        return std::make_shared<const TextElement>(traits, toolkit, std::make_shared<CallBudget>());
    }

    /// In place of all that was captured.
    Outcome write(const TextElementRef &target, const QString &text) {
        const CallBudget::Use use(target->budget);
        const Replacement written =
            QCoro::waitFor(writer->replace(target, {0, oldText.size()}, text)).replacement;
        if (written.outcome == Outcome::done)
            EXPECT_EQ(written.reason, QString());
        else
            expectReasonWithout(written, {oldText, text, field->text, QStringLiteral("zwei")});
        return written.outcome;
    }

    std::unique_ptr<ScriptedField> field;
    std::unique_ptr<AtspiBus> bus;
    std::unique_ptr<TextReader> reader;
    std::unique_ptr<TextWriter> writer;
};

TEST_F(WriterTest, OnlyTheChangedMiddleTravels) {
    QString inserted;
    field->insert = [&](qsizetype position, const QString &added) {
        inserted = added;
        field->text.insert(position, added);
    };
    EXPECT_EQ(write(element(), newText), Outcome::done);
    EXPECT_EQ(inserted, QStringLiteral("zwei"));
    EXPECT_EQ(field->text, newText);
    EXPECT_THAT(field->calls,
                ElementsAre(QStringLiteral("DeleteText"), QStringLiteral("InsertText")));
}

TEST_F(WriterTest, RefusedInsertionBringsTheOldWordsBack) {
    int refusals = 1;
    field->insert = [&](qsizetype position, const QString &added) {
        if (refusals-- <= 0)
            field->text.insert(position, added);
    };
    EXPECT_EQ(write(element(), newText), Outcome::refused);
    EXPECT_EQ(field->text, oldText);
    EXPECT_THAT(field->calls,
                ElementsAre(QStringLiteral("DeleteText"), QStringLiteral("InsertText"),
                            QStringLiteral("InsertText")));
}

TEST_F(WriterTest, AlteredInsertionIsTakenBack) {
    field->insert = [&](qsizetype position, const QString &added) {
        field->text.insert(position, added == QStringLiteral("zwei") ? added.left(2) : added);
    };
    EXPECT_EQ(write(element(), newText), Outcome::refused);
    EXPECT_EQ(field->text, oldText);
}

TEST_F(WriterTest, RefusedDeletionChangesNothing) {
    field->refusesDeletion = true;
    EXPECT_EQ(write(element(), newText), Outcome::refused);
    EXPECT_EQ(field->text, oldText);
    EXPECT_THAT(field->calls, ElementsAre(QStringLiteral("DeleteText")));
}

TEST_F(WriterTest, StallIsWaitedForAndTheTextIsWrittenOnce) {
    for (const int stall : {400, 1200, 2500}) {
        SCOPED_TRACE(stall);
        field->text = oldText;
        field->calls.clear();
        field->stall = std::chrono::milliseconds(stall);
        EXPECT_EQ(write(element(), newText), Outcome::done);
        EXPECT_EQ(field->text, newText);
        EXPECT_THAT(field->calls,
                    ElementsAre(QStringLiteral("DeleteText"), QStringLiteral("InsertText")));
    }
}

TEST_F(WriterTest, NobodyKnowsWhatComesOfAnOrderThatIsNotAttendedTo) {
    field->stall = std::chrono::seconds(8);
    EXPECT_EQ(write(element(), newText), Outcome::uncertain);
    EXPECT_EQ(field->text, oldText);
    field->stall = std::chrono::milliseconds(0);
    waitUntil([this] { return field->text == newText; },
              QStringLiteral("the orders are carried out after all"));
    EXPECT_THAT(field->calls,
                ElementsAre(QStringLiteral("DeleteText"), QStringLiteral("InsertText")));
}

TEST_F(WriterTest, LateRefusalIsFollowedByNothing) {
    field->stall = std::chrono::milliseconds(1200);
    field->refusesDeletion = true;
    EXPECT_EQ(write(element(), newText), Outcome::uncertain);
    EXPECT_EQ(field->text, oldText);
    EXPECT_THAT(field->calls, ElementsAre(QStringLiteral("DeleteText")));
}

TEST_F(WriterTest, RepairIsTriedMoreThanOnce) {
    for (const int refused : {2, 3, 4}) {
        SCOPED_TRACE(refused);
        field->text = oldText;
        field->setsContents = refused == 4;
        int refusals = refused;
        field->insert = [&](qsizetype position, const QString &added) {
            if (refusals-- <= 0)
                field->text.insert(position, added);
        };
        EXPECT_EQ(write(element(), newText), Outcome::refused);
        EXPECT_EQ(field->text, oldText);
    }
}

TEST_F(WriterTest, RepairThatIsRefusedLeavesAnUnknownText) {
    field->insert = [](qsizetype, const QString &) {};
    EXPECT_EQ(write(element(), newText), Outcome::uncertain);
}

TEST_F(WriterTest, DeletionThatIsNeverAnsweredIsFollowedByItsInsertion) {
    field->answersDeletion = false;
    EXPECT_EQ(write(element(), newText), Outcome::done);
    EXPECT_EQ(field->text, newText);
    EXPECT_THAT(field->calls,
                ElementsAre(QStringLiteral("DeleteText"), QStringLiteral("InsertText")));
}

TEST_F(WriterTest, ChangeElsewhereAtTheSameTimeIsNoFailure) {
    field->insert = [&](qsizetype position, const QString &added) {
        field->text.insert(position, added);
        field->text.append(QStringLiteral(" four"));
        field->text.replace(QStringLiteral("three"), QStringLiteral("3"));
    };
    EXPECT_EQ(write(element(), newText), Outcome::done);
    EXPECT_EQ(field->text, QStringLiteral("one zwei 3 four"));
}

TEST_F(WriterTest, ChangeSinceTheCaptureStopsTheWrite) {
    const TextElementRef target = element();
    target->captured = oldText;
    field->text = QStringLiteral("one two! hree");
    EXPECT_EQ(write(target, newText), Outcome::refused);
    EXPECT_EQ(field->text, QStringLiteral("one two! hree"));
    EXPECT_TRUE(field->calls.isEmpty());
}

TEST_F(WriterTest, ChangeSinceTheReadingStopsTheWrite) {
    for (const char *changed : {"one two! hree", "one two three four"}) {
        SCOPED_TRACE(changed);
        field->text = oldText;
        field->whenRead = [&] {
            field->text = QString::fromLatin1(changed);
            field->whenRead = nullptr;
        };
        const TextElementRef target = element();
        target->captured = oldText;
        EXPECT_EQ(write(target, newText), Outcome::refused);
        EXPECT_EQ(field->text, QString::fromLatin1(changed));
        EXPECT_TRUE(field->calls.isEmpty());
    }
}

TEST_F(WriterTest, TextsThatNoFieldHoldsAreRefused) {
    for (const QString &bad :
         {QStringLiteral("a\uFFFCb"), QString(QChar(u'\0')), QString(QChar(0xd83d))})
        EXPECT_EQ(write(element(), bad), Outcome::refused);
    field->text = QStringLiteral("one two\uFFFCthree");
    EXPECT_EQ(write(element(), newText), Outcome::refused);
    EXPECT_TRUE(field->calls.isEmpty());
}

TEST_F(WriterTest, OnlyWhatStandsInTheRangeIsReplaced) {
    const TextElementRef target = element();
    target->captured = oldText;
    field->text = QStringLiteral("zero ") + oldText + QStringLiteral(" four");
    EXPECT_EQ(write(target, newText), Outcome::refused);
    field->text = QStringLiteral("zero ") + oldText;
    EXPECT_EQ(write(target, newText), Outcome::done);
    EXPECT_EQ(field->text, QStringLiteral("zero ") + newText);
    field->text = oldText + QStringLiteral(" four");
    EXPECT_EQ(write(target, newText), Outcome::done);
    EXPECT_EQ(field->text, newText + QStringLiteral(" four"));
}

TEST_F(WriterTest, ParagraphOfItsOwnTakesNoLineBreak) {
    field->insert = [&](qsizetype position, const QString &added) {
        field->text.insert(position, added);
    };
    for (const char *text : {"one two\nthree", "one\r\ntwo three"}) {
        EXPECT_EQ(write(element({1U << 7, 0}, Toolkit::libreOffice), QString::fromLatin1(text)),
                  Outcome::refused);
    }
    EXPECT_TRUE(field->calls.isEmpty());
    EXPECT_EQ(write(element({1U << 7, 0}, Toolkit::libreOffice), newText), Outcome::done);
    EXPECT_THAT(field->calls,
                ElementsAre(QStringLiteral("DeleteText"), QStringLiteral("InsertText")));
}

TEST_F(WriterTest, FieldThatDoesNotKnowItsEndIsReadByItsLength) {
    field->knowsItsEnd = false;
    EXPECT_EQ(write(element(), newText), Outcome::done);
    EXPECT_EQ(field->text, newText);
}

TEST_F(WriterTest, WhatCannotBeWrittenIsNotTouched) {
    constexpr uint editable = 1U << 7;
    constexpr uint readOnly = 1U << (43 - 32);
    EXPECT_EQ(write(element({0, 0}), newText), Outcome::refused);
    EXPECT_EQ(write(element({editable, readOnly}), newText), Outcome::refused);
    for (const Toolkit toolkit : {Toolkit::gecko, Toolkit::chromium})
        EXPECT_EQ(write(element({editable, 0}, toolkit), newText), Outcome::refused);
    EXPECT_TRUE(field->calls.isEmpty());
}

} // namespace
} // namespace quillmender::atspi
