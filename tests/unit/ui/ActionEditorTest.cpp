#include "SettingsWindowFixture.h"

#include <QAccessible>

namespace quillmender {

namespace {

const CustomAction mine{QUuid::createUuid(), QStringLiteral("Mine"), QStringLiteral("Do {{text}}")};
const char defaultTemplate[] = "Rewrite the following text to match this instruction.\nReturn only "
                               "the final text.\n\nText:\n{{text}}";

class ActionEditorTest : public SettingsWindowFixture {
  protected:
    void SetUp() override {
        store().setCustomActions({mine});
        show();
    }

    void openRow(qsizetype row) {
        rows().at(row)->editButton()->click();
        waitForSheet();
    }
    void openNew() {
        button("New Action")->click();
        waitForSheet();
    }
    void waitForSheet() { ASSERT_TRUE(sheet() && QTest::qWaitForWindowActive(sheet())); }

    TextField *title() { return sheet()->titleField(); }
    InstructionEditor *body() { return sheet()->templateEditor(); }

    void typeTitle(const QString &text) { replaceText(title(), text); }
    void typeTemplate(const QString &text) {
        body()->selectAll();
        QTest::keyClick(body(), Qt::Key_Delete);
        QTest::keyClicks(body(), text);
    }
    void expectClosed() {
        settle();
        EXPECT_FALSE(sheet());
        EXPECT_FALSE(controller().view()->actionEditor());
    }
};

} // namespace

TEST_F(ActionEditorTest, ShowsItsTexts) {
    openNew();
    EXPECT_EQ(texts(sheet()).join(u'|').toStdString(),
              "New Action|Button Title|Prompt Template|"
              "Use `{{text}}` where the captured text should be inserted.");
    EXPECT_EQ(title()->placeholderText().toStdString(), "Example: Rewrite as Email");
    const auto name = [](QWidget *widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).toStdString();
    };
    EXPECT_EQ(name(title()), "Button Title");
    EXPECT_EQ(name(body()), "Prompt Template");
    EXPECT_EQ(name(sheet()), "New Action");
    EXPECT_TRUE(button(sheet(), "Cancel")->x() < button(sheet(), "OK")->x());
}

TEST_F(ActionEditorTest, StartsFromTheAction) {
    openRow(0);
    EXPECT_EQ(texts(sheet()).first().toStdString(), "Edit Starter Action");
    EXPECT_EQ(title()->text().toStdString(), "Formalize");
    EXPECT_EQ(body()->toPlainText(), defaultPromptTemplate(TextAction::formalize));
    EXPECT_EQ(controller().view()->actionEditor()->id().toStdString(), "builtin-formalize");
    sheet()->cancelButton()->click();
    settle();
    openRow(7);
    EXPECT_EQ(texts(sheet()).first().toStdString(), "Edit Action");
    EXPECT_EQ(title()->text().toStdString(), "Mine");
    EXPECT_EQ(body()->toPlainText().toStdString(), "Do {{text}}");
    EXPECT_EQ(controller().view()->actionEditor()->id(),
              QStringLiteral("custom-") + identifierText(mine.id));
}

TEST_F(ActionEditorTest, NewStartsFromTheDefaultEachTime) {
    for (int time = 0; time < 2; ++time) {
        openNew();
        EXPECT_EQ(title()->text(), QString());
        EXPECT_EQ(body()->toPlainText().toStdString(), defaultTemplate);
        EXPECT_EQ(controller().view()->actionEditor()->id().toStdString(), "new");
        typeTitle(QStringLiteral("x"));
        typeTemplate(QStringLiteral("y"));
        sheet()->cancelButton()->click();
        expectClosed();
    }
}

TEST_F(ActionEditorTest, OkNeedsATitleAndATemplate) {
    openNew();
    EXPECT_FALSE(sheet()->okButton()->isEnabled());
    typeTitle(QStringLiteral("   "));
    EXPECT_FALSE(sheet()->okButton()->isEnabled());
    typeTitle(QStringLiteral("T"));
    EXPECT_TRUE(sheet()->okButton()->isEnabled());
    typeTemplate(QStringLiteral(" "));
    EXPECT_FALSE(sheet()->okButton()->isEnabled());
    QTest::keyClick(body(), Qt::Key_Return);
    EXPECT_FALSE(sheet()->okButton()->isEnabled());
    QTest::keyClicks(body(), QStringLiteral("x"));
    EXPECT_TRUE(sheet()->okButton()->isEnabled());
    EXPECT_TRUE(sheet()->cancelButton()->isEnabled());
}

TEST_F(ActionEditorTest, NewActionGoesToTheEndTrimmed) {
    openNew();
    typeTitle(QStringLiteral(" As Email "));
    typeTemplate(QStringLiteral("  Write an email "));
    sheet()->okButton()->click();
    expectClosed();
    ASSERT_EQ(store().customActions().size(), 2);
    EXPECT_EQ(store().customActions().last().title.toStdString(), "As Email");
    EXPECT_EQ(store().customActions().last().promptTemplate.toStdString(), "Write an email")
        << "without {{text}} it is accepted";
    EXPECT_EQ(titles().last().toStdString(), "As Email");
}

TEST_F(ActionEditorTest, CustomActionKeepsItsPlaceAndIdentifier) {
    const CustomAction other{QUuid::createUuid(), QStringLiteral("Other"), QStringLiteral("o")};
    store().setCustomActions({mine, other});
    settle();
    openRow(7);
    typeTitle(QStringLiteral("Renamed"));
    sheet()->okButton()->click();
    expectClosed();
    EXPECT_EQ(
        store().customActions(),
        QList<CustomAction>({{mine.id, QStringLiteral("Renamed"), mine.promptTemplate}, other}));
    EXPECT_TRUE(defaults.data(QStringLiteral("settings.customActions"))->contains("Renamed"));
}

TEST_F(ActionEditorTest, SavingAnActionThatIsGoneChangesNothing) {
    openRow(7);
    store().removeCustomAction(mine.id);
    sheet()->okButton()->click();
    expectClosed();
    EXPECT_TRUE(store().customActions().isEmpty());
}

TEST_F(ActionEditorTest, SavingAStarterActionMakesItVisible) {
    openRow(0);
    store().hideBuiltInAction(TextAction::formalize);
    settle();
    EXPECT_NE(titles().first().toStdString(), "Formalize");
    typeTitle(QStringLiteral("Formally"));
    sheet()->okButton()->click();
    expectClosed();
    const BuiltInActionConfig saved = store().builtInActions().first();
    EXPECT_EQ(saved, (BuiltInActionConfig{TextAction::formalize, QStringLiteral("Formally"),
                                          defaultPromptTemplate(TextAction::formalize), false}));
    EXPECT_EQ(titles().first().toStdString(), "Formally");
}

TEST_F(ActionEditorTest, ReturnInTheTitleIsOk) {
    openNew();
    QTest::keyClick(title(), Qt::Key_Return);
    EXPECT_TRUE(sheet()) << "disabled";
    typeTitle(QStringLiteral("Quick"));
    QTest::keyClick(title(), Qt::Key_Return);
    expectClosed();
    EXPECT_EQ(store().customActions().last().title.toStdString(), "Quick");
    EXPECT_EQ(store().customActions().last().promptTemplate.toStdString(), defaultTemplate);
}

TEST_F(ActionEditorTest, ReturnInTheTemplateIsALineBreak) {
    openRow(7);
    body()->moveCursor(QTextCursor::End);
    QTest::keyClick(body(), Qt::Key_Return);
    QTest::keyClicks(body(), QStringLiteral("x"));
    ASSERT_TRUE(sheet());
    sheet()->okButton()->click();
    EXPECT_EQ(store().customActions().first().promptTemplate.toStdString(), "Do {{text}}\nx");
}

TEST_F(ActionEditorTest, EscapeClosesOnlyWhatWasNotEdited) {
    for (const bool isTitle : {true, false}) {
        openRow(7);
        const auto field = [&]() -> QWidget * {
            return isTitle ? static_cast<QWidget *>(title()) : body();
        };
        const QString before = isTitle ? title()->text() : body()->toPlainText();
        QTest::keyClicks(field(), QStringLiteral("x"));
        QTest::keyClick(field(), Qt::Key_Escape);
        ASSERT_TRUE(sheet());
        if (isTitle)
            title()->setText(before);
        else
            body()->setPlainText(before);
        QTest::keyClick(field(), Qt::Key_Escape);
        expectClosed();
    }
    EXPECT_EQ(store().customActions(), QList<CustomAction>({mine}));
    EXPECT_TRUE(window()->isVisible());
}

TEST_F(ActionEditorTest, CancelAndTheTitleBarDiscard) {
    const std::function<void()> ways[] = {
        [this] { sheet()->cancelButton()->click(); },
        [this] { sheet()->close(); },
    };
    for (const auto &cancel : ways) {
        openRow(7);
        typeTitle(QStringLiteral("Changed"));
        cancel();
        expectClosed();
        EXPECT_EQ(store().customActions(), QList<CustomAction>({mine}));
        EXPECT_TRUE(window()->isVisible());
    }
}

TEST_F(ActionEditorTest, IsModalOverTheSettings) {
    openNew();
    EXPECT_EQ(sheet()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(sheet()->parentWidget(), window());
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == title(); }, 5000));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), body());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), sheet()->cancelButton());
    typeTitle(QStringLiteral("T"));
    sheet()->cancelButton()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), sheet()->okButton());
}

TEST_F(ActionEditorTest, ShowingTheSettingsAgainBringsTheSheetForward) {
    openNew();
    controller().makeKeyAndOrderFront();
    EXPECT_EQ(ownWindows.calls.last(), (Call{QStringLiteral("activate"), sheet()->windowHandle()}));
    window()->hide();
    expectClosed();
}

} // namespace quillmender
