#include "ui/AlertWindow.h"

#include "PanelFixture.h"
#include "ui/PushButton.h"
#include "ui/SymbolView.h"

#include <QAccessible>
#include <QScreen>

namespace quillmender {

namespace {

class AlertWindowTest : public testing::Test {
  protected:
    void show() {
        window.makeKeyAndOrderFront();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    PushButton *button(int index) const { return window.buttons().at(index); }

    fakes::FakeAppearance appearance;
    fakes::FakeSymbols symbols;
    fakes::FakeOwnWindows ownWindows;
    Theme theme{appearance, symbols};
    QList<int> answers;
    AlertWindow window{{QStringLiteral("Quillmender 2 is available"),
                        QStringLiteral("Do you want <b>it</b> now?"),
                        {QStringLiteral("Download"), QStringLiteral("Later")}},
                       [this](int button) { answers.append(button); },
                       theme,
                       ownWindows};
};

} // namespace

TEST_F(AlertWindowTest, SaysItsTextsPlainlyAndOffersItsButtons) {
    show();
    QStringList texts;
    for (const TextLabel *label : window.findChildren<TextLabel *>())
        texts.append(label->text());
    EXPECT_EQ(texts.join(u'|').toStdString(),
              "Quillmender 2 is available|Do you want <b>it</b> now?");
    EXPECT_EQ(window.findChildren<QLabel *>().last()->textFormat(), Qt::PlainText);
    EXPECT_EQ(button(0)->caption().toStdString(), "Download");
    EXPECT_EQ(button(1)->caption().toStdString(), "Later");
    EXPECT_GT(button(0)->x(), button(1)->x());
    EXPECT_TRUE(button(0)->isDefault());
}

TEST_F(AlertWindowTest, ItsSymbolBeginsWhereEverythingElseEnds) {
    symbols.drawsSymbols = true;
    symbols.bearing = 5;
    appearance.become(appearance.current);
    show();
    auto *symbol = window.findChild<SymbolView *>();
    QImage image(symbol->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    symbol->render(&image, QPoint(), QRegion(), {});
    EXPECT_EQ(image.pixelColor(0, 20).alpha(), 255);
    EXPECT_EQ(symbol->x(), 24);
}

TEST_F(AlertWindowTest, NothingWaitsForIt) {
    show();
    EXPECT_FALSE(window.isModal());
    EXPECT_EQ(window.windowModality(), Qt::NonModal);
    QWidget other;
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_EQ(answers, QList<int>());
}

TEST_F(AlertWindowTest, IsADialogInTheMiddleAboveTheOthers) {
    show();
    EXPECT_EQ(ownWindows.calls.last(), (Call{QStringLiteral("activate"), window.windowHandle()}));
    EXPECT_TRUE(window.windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_LE((window.frameGeometry().center() - window.screen()->availableGeometry().center())
                  .manhattanLength(),
              8);
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&window);
    EXPECT_EQ(interface->role(), QAccessible::Dialog);
    EXPECT_EQ(interface->text(QAccessible::Name).toStdString(), "Quillmender 2 is available");
    EXPECT_EQ(interface->text(QAccessible::Description).toStdString(),
              "Do you want <b>it</b> now?");
    EXPECT_EQ(
        QAccessible::queryAccessibleInterface(button(1))->text(QAccessible::Name).toStdString(),
        "Later");
}

TEST_F(AlertWindowTest, EachButtonAnswersOnceAndHides) {
    show();
    QTest::mouseClick(button(0), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
    button(1)->click();
    window.close();
    EXPECT_EQ(answers, QList<int>{0});
}

TEST_F(AlertWindowTest, ReturnPressesTheFirstButton) {
    show();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(answers, QList<int>{0});
}

TEST_F(AlertWindowTest, TabReachesTheOtherButton) {
    show();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(answers, QList<int>{1});
}

TEST_F(AlertWindowTest, EscapeMeansTheLastButton) {
    show();
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(answers, QList<int>{1});
    EXPECT_FALSE(window.isVisible());
}

TEST_F(AlertWindowTest, ClosingMeansTheLastButtonAndEndsNothing) {
    show();
    window.close();
    EXPECT_EQ(answers, QList<int>{1});
    EXPECT_FALSE(window.testAttribute(Qt::WA_QuitOnClose));
}

TEST_F(AlertWindowTest, ALongTextIsShownWhole) {
    AlertWindow tall({QString(300, u'9'), QStringLiteral("?"), {QStringLiteral("Later")}}, {},
                     theme, ownWindows);
    tall.makeKeyAndOrderFront();
    for (const TextLabel *label : tall.findChildren<TextLabel *>())
        EXPECT_GE(label->height(), label->heightForWidth(label->width()));
}

} // namespace quillmender
