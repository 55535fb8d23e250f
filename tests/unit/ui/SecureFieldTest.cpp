#include "SettingsWindowFixture.h"

#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>

namespace quillmender {

namespace {

const QString key = QStringLiteral("sk-\u00e9-secret");

class SecureFieldTest : public SettingsWindowFixture {
  protected:
    void SetUp() override {
        secrets.items[{QStringLiteral("com.quillmender.openAI"), QStringLiteral("api-key")}] =
            key.toUtf8();
        show();
    }
    void TearDown() override { QAccessible::setActive(false); }

    SecureField *secure(const char *label) { return qobject_cast<SecureField *>(field(label)); }

    static QString storedText(QAccessibleInterface *interface) {
        QString all;
        for (int kind = QAccessible::Name; kind <= QAccessible::Accelerator; ++kind)
            all += interface->text(QAccessible::Text(kind)) + u'\n';
        all += interface->text(QAccessible::DebugDescription) + u'\n';
        QAccessibleTextInterface *text = interface->textInterface();
        int start = 0;
        int end = 0;
        const int count = text->characterCount();
        all += text->text(0, count) + u'\n';
        for (const auto boundary :
             {QAccessible::CharBoundary, QAccessible::WordBoundary, QAccessible::LineBoundary}) {
            all += text->textAtOffset(1, boundary, &start, &end) + u'\n';
            all += text->textBeforeOffset(count, boundary, &start, &end) + u'\n';
            all += text->textAfterOffset(0, boundary, &start, &end) + u'\n';
        }
        return all;
    }
};

} // namespace

TEST_F(SecureFieldTest, AllThreeKeysAreSecure) {
    for (const char *label : {"OpenAI API Key", "Anthropic API Key", "Gemini API Key"}) {
        ASSERT_TRUE(secure(label)) << label;
        EXPECT_EQ(secure(label)->echoMode(), QLineEdit::Password);
        QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(secure(label));
        EXPECT_TRUE(interface->state().passwordEdit) << label;
    }
}

TEST_F(SecureFieldTest, ShowsTheStoredKeyAsBullets) {
    EXPECT_EQ(secure("OpenAI API Key")->text(), key);
    EXPECT_EQ(secure("OpenAI API Key")->displayText().size(), key.size());
    EXPECT_FALSE(secure("OpenAI API Key")->displayText().contains(u's'));
}

TEST_F(SecureFieldTest, AssistiveToolsNeverReadIt) {
    SecureField *edit = secure("OpenAI API Key");
    edit->selectAll();
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(edit);
    for (const QString &part : {key, QStringLiteral("sk"), QStringLiteral("secret")})
        EXPECT_FALSE(storedText(interface).contains(part)) << storedText(interface).toStdString();
}

TEST_F(SecureFieldTest, CannotBeCopiedCutOrDragged) {
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    SecureField *edit = secure("OpenAI API Key");
    edit->setFocus();
    edit->selectAll();
    QTest::keySequence(edit, QKeySequence::Copy);
    QTest::keySequence(edit, QKeySequence::Cut);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "before");
    EXPECT_EQ(edit->text(), key);
    EXPECT_FALSE(edit->dragEnabled());
    QTest::keySequence(edit, QKeySequence::Paste);
    EXPECT_EQ(edit->text().toStdString(), "before");
}

TEST_F(SecureFieldTest, UndoNeverEmptiesIt) {
    SecureField *edit = secure("OpenAI API Key");
    edit->setFocus();
    edit->end(false);
    QTest::keyClicks(edit, QStringLiteral("12"));
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keySequence(edit, QKeySequence::Undo);
    QTest::keySequence(edit, QKeySequence::Redo);
    EXPECT_EQ(edit->text(), key + u'1');
    EXPECT_EQ(store().apiKey(AIProvider::openAI), key + u'1');

    QContextMenuEvent request(QContextMenuEvent::Mouse, QPoint(5, 5), edit->mapToGlobal(QPoint()));
    QCoreApplication::sendEvent(edit, &request);
    const auto *menu = edit->findChild<QMenu *>();
    ASSERT_TRUE(menu);
    QStringList offered;
    for (const QAction *action : menu->actions())
        offered.append(action->text());
    EXPECT_EQ(offered.join(u'|').toStdString(), "Paste|Select All");
}

TEST_F(SecureFieldTest, ForgetsTheKeyWhenTheWindowCloses) {
    SecureField *edit = secure("OpenAI API Key");
    edit->setFocus();
    QTest::keyClicks(edit, QStringLiteral("x"));
    const QString typed = store().apiKey(AIProvider::openAI);
    log->clear();
    window()->close();
    EXPECT_EQ(edit->text(), QString());
    EXPECT_FALSE(edit->isUndoAvailable());
    edit->undo();
    EXPECT_EQ(edit->text(), QString());
    EXPECT_EQ(*log, QStringList()) << "nothing is written";
    EXPECT_EQ(store().apiKey(AIProvider::openAI), typed);
    show();
    EXPECT_EQ(edit->text(), typed);
    EXPECT_FALSE(edit->isUndoAvailable());
}

TEST_F(SecureFieldTest, SpacesStayInTheFieldAndDeleteTheKey) {
    replaceText(secure("OpenAI API Key"), QStringLiteral("  "));
    EXPECT_EQ(secure("OpenAI API Key")->text().toStdString(), "  ");
    EXPECT_TRUE(secrets.items.isEmpty());
}

TEST_F(SecureFieldTest, OnlyTheSecureFieldsHoldTheKey) {
    for (const QLineEdit *each : window()->findChildren<QLineEdit *>()) {
        if (each->text().contains(key)) {
            EXPECT_TRUE(qobject_cast<const SecureField *>(each));
        }
    }
    EXPECT_FALSE(texts(window()).join(u'\n').contains(key));
}

} // namespace quillmender
