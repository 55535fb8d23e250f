#include "desktop/atspi/AtspiTest.h"
#include "desktop/atspi/ScriptedField.h"

#include <QCoroTask>
#include <gmock/gmock.h>

namespace quillmender {
namespace {

using harness::waitUntil;
using testing::ElementsAre;

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
        Traits traits;
        traits.object = {field->service(), ScriptedField::path()};
        traits.role = 61;
        traits.states = StateSet(states);
        traits.interfaces = {QStringLiteral("org.a11y.atspi.Text"),
                             QStringLiteral("org.a11y.atspi.EditableText")};
        return std::make_shared<const TextElement>(nullptr, traits, toolkit,
                                                   std::make_shared<Budget>());
    }

    AccessibilityError write(const TextElementRef &target, const QString &text) {
        const Budget::Use use(target->budget);
        return QCoro::waitFor(writer->write(target, text));
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
    EXPECT_EQ(write(element(), newText), AccessibilityError::success);
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
    EXPECT_EQ(write(element(), newText), AccessibilityError::failure);
    EXPECT_EQ(field->text, oldText);
    EXPECT_THAT(field->calls,
                ElementsAre(QStringLiteral("DeleteText"), QStringLiteral("InsertText"),
                            QStringLiteral("InsertText")));
}

TEST_F(WriterTest, AlteredInsertionIsTakenBack) {
    field->insert = [&](qsizetype position, const QString &added) {
        field->text.insert(position, added == QStringLiteral("zwei") ? added.left(2) : added);
    };
    EXPECT_EQ(write(element(), newText), AccessibilityError::failure);
    EXPECT_EQ(field->text, oldText);
}

TEST_F(WriterTest, RefusedDeletionChangesNothing) {
    field->refusesDeletion = true;
    EXPECT_EQ(write(element(), newText), AccessibilityError::failure);
    EXPECT_EQ(field->text, oldText);
    EXPECT_THAT(field->calls, ElementsAre(QStringLiteral("DeleteText")));
}

TEST_F(WriterTest, StallIsWaitedForAndTheTextIsWrittenOnce) {
    for (const int stall : {400, 1200, 2500}) {
        SCOPED_TRACE(stall);
        field->text = oldText;
        field->calls.clear();
        field->stall = std::chrono::milliseconds(stall);
        EXPECT_EQ(write(element(), newText), AccessibilityError::success);
        EXPECT_EQ(field->text, newText);
        EXPECT_THAT(field->calls,
                    ElementsAre(QStringLiteral("DeleteText"), QStringLiteral("InsertText")));
    }
}

TEST_F(WriterTest, NobodyKnowsWhatComesOfAnOrderThatIsNotAttendedTo) {
    field->stall = std::chrono::seconds(8);
    EXPECT_EQ(write(element(), newText), AccessibilityError::cannotComplete);
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
    EXPECT_EQ(write(element(), newText), AccessibilityError::cannotComplete);
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
        EXPECT_EQ(write(element(), newText), AccessibilityError::failure);
        EXPECT_EQ(field->text, oldText);
    }
}

TEST_F(WriterTest, RepairThatIsRefusedLeavesAnUnknownText) {
    field->insert = [](qsizetype, const QString &) {};
    EXPECT_EQ(write(element(), newText), AccessibilityError::cannotComplete);
}

TEST_F(WriterTest, DeletionThatIsNeverAnsweredIsFollowedByItsInsertion) {
    field->answersDeletion = false;
    EXPECT_EQ(write(element(), newText), AccessibilityError::success);
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
    EXPECT_EQ(write(element(), newText), AccessibilityError::success);
    EXPECT_EQ(field->text, QStringLiteral("one zwei 3 four"));
}

TEST_F(WriterTest, ChangeSinceTheReadingStopsTheWrite) {
    const TextElementRef target = element();
    {
        const Budget::Use use(target->budget);
        QCoro::waitFor(reader->wholeText(target));
    }
    field->text = QStringLiteral("one two! hree");
    EXPECT_EQ(write(target, newText), AccessibilityError::failure);
    field->text = oldText + QStringLiteral(" four");
    EXPECT_EQ(write(target, newText), AccessibilityError::failure);
    EXPECT_TRUE(field->calls.isEmpty());
}

TEST_F(WriterTest, ParagraphOfItsOwnTakesNoLineBreak) {
    field->insert = [&](qsizetype position, const QString &added) {
        field->text.insert(position, added);
    };
    for (const char *text : {"one two\nthree", "one\r\ntwo three"}) {
        EXPECT_EQ(write(element({1U << 7, 0}, Toolkit::libreOffice), QString::fromLatin1(text)),
                  AccessibilityError::failure);
    }
    EXPECT_TRUE(field->calls.isEmpty());
    EXPECT_EQ(write(element({1U << 7, 0}, Toolkit::libreOffice), newText),
              AccessibilityError::success);
    EXPECT_THAT(field->calls,
                ElementsAre(QStringLiteral("DeleteText"), QStringLiteral("InsertText")));
}

TEST_F(WriterTest, FieldThatDoesNotKnowItsEndIsReadByItsLength) {
    field->knowsItsEnd = false;
    EXPECT_EQ(write(element(), newText), AccessibilityError::success);
    EXPECT_EQ(field->text, newText);
}

TEST_F(WriterTest, WhatCannotBeWrittenIsNotTouched) {
    constexpr uint editable = 1U << 7;
    constexpr uint readOnly = 1U << (43 - 32);
    EXPECT_EQ(write(element({0, 0}), newText), AccessibilityError::attributeUnsupported);
    EXPECT_EQ(write(element({editable, readOnly}), newText),
              AccessibilityError::attributeUnsupported);
    for (const Toolkit toolkit : {Toolkit::gecko, Toolkit::chromium})
        EXPECT_EQ(write(element({editable, 0}, toolkit), newText),
                  AccessibilityError::attributeUnsupported);
    EXPECT_TRUE(field->calls.isEmpty());
}

} // namespace
} // namespace quillmender
