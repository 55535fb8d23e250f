#include "desktop/harness/Waiter.h"
#include "desktop/wayland/panel/HeadlessDesktop.h"
#include "desktop/wayland/panel/TestUser.h"

#include <QJsonArray>
#include <QStandardPaths>
#include <gmock/gmock.h>

#include <algorithm>

namespace quillmender::test {

using harness::waitUntil;

/// The panel in front of a document that the user types in.
class PanelTest : public testing::TestWithParam<const char *> {
  protected:
    void SetUp() override {
        for (const char *program : {compositor()})
            if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty())
                GTEST_SKIP() << "not tested: " << program << " is not installed";
    }

    static const char *compositor() { return GetParam(); }
    static bool isSway() { return QByteArrayView(GetParam()) == "sway"; }

    void start(int outputs = 1, const char *panel = QUILLMENDER_PANEL_PROGRAM,
               const QByteArray &lines = {}) {
        desktop =
            std::make_unique<HeadlessDesktop>(QString::fromLatin1(compositor()), outputs, lines);
        const QSize all(HeadlessDesktop::size.width() * outputs, HeadlessDesktop::size.height());
        user = std::make_unique<TestUser>(desktop->display(), all);
        document = desktop->start(QStringLiteral(QUILLMENDER_DOCUMENT_PROGRAM));
        waitUntil([this] { return isActive(*document); }, QStringLiteral("the document is active"));
        this->panel = desktop->start(QString::fromUtf8(panel));
    }

    static bool isActive(Program &program) {
        return program.ask(QStringLiteral("state"))[QStringLiteral("isActive")].toBool();
    }
    static QString text(Program &program) {
        return program.ask(QStringLiteral("state"))[QStringLiteral("text")].toString();
    }
    bool saysThatTheKeyboardIsElsewhere() {
        const QJsonArray texts = state("texts").toArray();
        return std::ranges::any_of(texts, [](const QJsonValue &text) {
            return text.toString().startsWith(QStringLiteral("The keyboard is still"));
        });
    }
    QJsonValue state(const char *name) {
        return panel->ask(QStringLiteral("state"))[QLatin1String(name)];
    }

    void show() {
        panel->tell(QStringLiteral("show"));
        waitUntil([this] { return hasKeyboard(); }, QStringLiteral("the panel is active"));
    }

    /// For good, and not only as it appears.
    bool hasKeyboard() {
        const QJsonObject now = panel->ask(QStringLiteral("state"));
        const bool isLayer = now[QStringLiteral("backend")] == QStringLiteral("layer shell");
        return now[QStringLiteral("isActive")].toBool() &&
               (now[QStringLiteral("isDecided")].toBool() || !isLayer);
    }

    void hide() {
        panel->tell(QStringLiteral("hide"));
        waitUntil([this] { return !isActive(*panel) && isActive(*document); },
                  QStringLiteral("the document is active"));
    }

    void expectTexts(const char *inDocument, const char *inPanel) {
        waitUntil(
            [&] {
                return text(*document) == QLatin1String(inDocument) &&
                       text(*panel) == QLatin1String(inPanel);
            },
            QStringLiteral("'%1' in the document and '%2' in the panel; they have '%3' and '%4'")
                .arg(QLatin1String(inDocument), QLatin1String(inPanel), text(*document),
                     text(*panel)));
    }

    std::unique_ptr<HeadlessDesktop> desktop;
    std::unique_ptr<TestUser> user;
    std::unique_ptr<Program> document;
    std::unique_ptr<Program> panel;
};

TEST_P(PanelTest, WhatIsTypedGoesToThePanelAndThenToTheDocumentAgain) {
    start();
    user->type("before");
    show();
    EXPECT_EQ(state("backend").toString(), QStringLiteral("layer shell"));
    user->type("into panel");
    expectTexts("before", "into panel");
    hide();
    user->type(" after");
    expectTexts("before after", "into panel");
    show();
    user->type("again");
    expectTexts("before after", "into panelagain");
}

// Somebody who types on while the panel comes: nothing is lost or out of order.
TEST_P(PanelTest, EachKeyGoesToTheDocumentOrToThePanel) {
    start();
    QString inDocument;
    QString inPanel;
    for (int round = 0; round < 5; ++round) {
        constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz";
        std::size_t typed = 0;
        user->type(letters.substr(0, 3));
        panel->tell(QStringLiteral("show"));
        for (typed = 3; typed < letters.size(); ++typed)
            user->type(letters.substr(typed, 1));
        waitUntil([this] { return hasKeyboard(); }, QStringLiteral("the panel is active"));
        user->type("z");
        const auto typedNow = [&] {
            return text(*document).sliced(inDocument.size()) + text(*panel).sliced(inPanel.size());
        };
        EXPECT_TRUE(harness::becomesTrue([&] {
            return typedNow().size() > qsizetype(letters.size());
        })) << "every key comes";
        hide();
        hide();
        EXPECT_EQ(typedNow().toStdString(), "abcdefghijklmnopqrstuvwxyzz") << "round " << round;
        inDocument = text(*document);
        inPanel = text(*panel);
    }
}

TEST_P(PanelTest, StepsAsideAndComesBackWithoutTakingTheKeyboard) {
    start();
    show();
    user->type("kept");
    expectTexts("", "kept");
    panel->tell(QStringLiteral("aside"));
    waitUntil([this] { return isActive(*document); }, QStringLiteral("the document is active"));
    EXPECT_FALSE(state("isVisible").toBool());
    user->type("one ");
    panel->tell(QStringLiteral("return"));
    waitUntil([this] { return state("isShown").toBool(); }, QStringLiteral("the panel is back"));
    user->type("two");
    expectTexts("one two", "kept");
    user->click(QPoint(HeadlessDesktop::size.width(), HeadlessDesktop::size.height()) / 2);
    waitUntil([this] { return isActive(*panel); }, QStringLiteral("the panel is active"));
    user->type(" on");
    waitUntil([this] { return text(*panel).contains(QStringLiteral("on")); },
              QStringLiteral("what is typed comes to the panel"));
    EXPECT_EQ(text(*document), QStringLiteral("one two"));
    // The next press of the hot key.
    hide();
    show();
}

TEST_P(PanelTest, IsInNobodysWayOnceTheUserHasGoneElsewhere) {
    start();
    show();
    user->click(QPoint(100, 400));
    if (isSway()) {
        user->type("still");
        expectTexts("", "still");
        return;
    }
    waitUntil([this] { return isActive(*document); }, QStringLiteral("the document is active"));
    EXPECT_TRUE(state("isVisible").toBool());
    user->type("on");
    expectTexts("on", "");
    EXPECT_FALSE(panel->ask(QStringLiteral("aside"))[QStringLiteral("isAside")].toBool());
    EXPECT_TRUE(state("isVisible").toBool());
}

TEST_P(PanelTest, ComesOnTheOutputOfTheSource) {
    start(2);
    for (const char *output : {"HEADLESS-2", "HEADLESS-1"}) {
        panel->tell(QStringLiteral("output ") + QLatin1String(output));
        show();
        EXPECT_EQ(state("output").toString(), QLatin1String(output));
        hide();
    }
}

TEST_P(PanelTest, AKeyThatIsHeldDownPressesNothing) {
    start();
    user->press(' ');
    show();
    // Where the compositor tells of it. The toolkit repeats no key whose press it has not seen.
    if (isSway()) {
        EXPECT_EQ(state("downAtFocus").toArray(), QJsonArray{qint64(toolkitCodeOf(' '))});
    }
    user->release(' ');
    user->type("a");
    waitUntil([this] { return text(*panel) == QStringLiteral("a"); },
              QStringLiteral("the key that comes after it"));
    EXPECT_EQ(state("calls").toArray(), QJsonArray());
    hide();
    show();
    EXPECT_EQ(state("downAtFocus").toArray(), QJsonArray());
    user->type(" ");
    waitUntil([this] { return state("calls").toArray().size() == 1; },
              QStringLiteral("a fresh one does"));
}

TEST_P(PanelTest, GivesWayToAnotherWindowOfTheProgram) {
    start();
    show();
    panel->tell(QStringLiteral("settings"));
    waitUntil([this] { return state("settingsAreActive").toBool(); },
              QStringLiteral("the settings are active"));
    user->type("name");
    waitUntil([this] { return state("settings").toString() == QStringLiteral("name"); },
              QStringLiteral("the settings have what is typed"));
    panel->tell(QStringLiteral("close"));
    waitUntil([this] { return isActive(*panel); }, QStringLiteral("the panel is active"));
    user->type("back");
    expectTexts("", "back");
}

TEST_P(PanelTest, IsAnOrdinaryWindowWithoutLayerShell) {
    start(1, QUILLMENDER_PLAIN_PANEL_PROGRAM);
    EXPECT_EQ(state("backend").toString(), QStringLiteral("an ordinary window"));
    show();
    user->type("in");
    expectTexts("", "in");
    hide();
    user->type("out");
    expectTexts("out", "in");
    show();
    user->type("again");
    expectTexts("out", "inagain");
}

// What is typed goes where it went, and the panel says so and takes clicks.
TEST_P(PanelTest, SaysThatTheKeyboardHasNotCome) {
    if (!isSway())
        GTEST_SKIP() << "only sway's user can say that a window gets no keyboard";
    start(1, QUILLMENDER_PLAIN_PANEL_PROGRAM, "no_focus [title=\"^Quillmender$\"]\n");
    user->type("some");
    panel->tell(QStringLiteral("show"));
    waitUntil([this] { return saysThatTheKeyboardIsElsewhere(); },
              QStringLiteral("the panel says that it has no keyboard"));
    EXPECT_FALSE(state("isActive").toBool());
    user->type(" words");
    expectTexts("some words", "");
    const QPoint middle(HeadlessDesktop::size.width() / 2, HeadlessDesktop::size.height() / 2);
    user->click(middle);
    waitUntil([this] { return hasKeyboard(); }, QStringLiteral("the panel is active"));
    EXPECT_TRUE(harness::becomesTrue([this] { return !saysThatTheKeyboardIsElsewhere(); }));
    user->type("in");
    waitUntil([this] { return text(*panel).endsWith(QStringLiteral("in")); },
              QStringLiteral("what is typed comes to the panel"));
    EXPECT_EQ(text(*document), QStringLiteral("some words"));
    hide();
    panel->tell(QStringLiteral("show"));
    waitUntil([this] { return saysThatTheKeyboardIsElsewhere(); },
              QStringLiteral("the panel says so again"));
    panel->tell(QStringLiteral("hide"));
    EXPECT_FALSE(saysThatTheKeyboardIsElsewhere());
}

// Asked for the keyboard once more, the other window appears anew; the panel stays beneath it.
TEST_P(PanelTest, GivesWayToAWindowThatTheKeyboardDoesNotComeTo) {
    if (!isSway())
        GTEST_SKIP() << "only sway's user can say that a window gets no keyboard";
    start(1, QUILLMENDER_PANEL_PROGRAM, "no_focus [title=\"^Quillmender Settings$\"]\n");
    show();
    panel->tell(QStringLiteral("settings"));
    waitUntil([this] { return state("timesWithheld").toInt() == 1; },
              QStringLiteral("the settings have waited for the keyboard"));
    user->click(QPoint(HeadlessDesktop::size.width(), HeadlessDesktop::size.height()) / 2);
    waitUntil([this] { return state("settingsAreActive").toBool(); },
              QStringLiteral("the settings are active"));
    user->type("name");
    waitUntil([this] { return state("settings").toString() == QStringLiteral("name"); },
              QStringLiteral("the settings have what is typed"));
    EXPECT_EQ(text(*panel), QString());
}

INSTANTIATE_TEST_SUITE_P(Compositors, PanelTest, testing::Values("sway", "labwc"),
                         [](const auto &info) { return std::string(info.param); });

} // namespace quillmender::test
