#include "PanelFixture.h"
#include "ui/AboutWindowController.h"
#include "ui/HostedWindow.h"
#include "ui/SymbolView.h"

#include <QAccessible>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

namespace quillmender {

namespace {

class AboutWindowTest : public testing::Test {
  protected:
    void show() {
        controller.centre();
        controller.makeKeyAndOrderFront();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window()));
        QCoreApplication::sendPostedEvents();
    }
    HostedWindow *window() const { return controller.window(); }
    QList<TextLabel *> labels() const { return window()->findChildren<TextLabel *>(); }

    fakes::FakeAppearance appearance;
    fakes::FakeSymbols symbols;
    fakes::FakeOwnWindows ownWindows;
    Theme theme{appearance, symbols};
    AboutWindowController controller{QStringLiteral("1.0.0"), theme, ownWindows};
};

} // namespace

TEST_F(AboutWindowTest, TextsAreThoseInTheirOrder) {
    show();
    QStringList texts;
    int y = -1;
    for (const TextLabel *label : labels()) {
        texts.append(label->text());
        const int top = label->mapTo(window(), QPoint()).y();
        EXPECT_GT(top, y) << label->text().toStdString();
        y = top;
    }
    EXPECT_EQ(
        texts.join(u'\n').toStdString(),
        "Quillmender\n"
        "Version 1.0.0\n"
        "Created by Orvelline\n"
        "Quillmender is a macOS text-assistance utility that sends captured text to a language "
        "model provider you configure and replaces the result back into the active app.\n"
        "Legal Notice\n"
        "Quillmender is provided on an \"as is\" and \"as available\" basis for convenience and "
        "productivity purposes only, without warranties of any kind, express or implied, "
        "including any warranty of accuracy, reliability, merchantability, fitness for a "
        "particular purpose, non-infringement, or uninterrupted availability.\n"
        "AI-generated output may be inaccurate, incomplete, misleading, offensive, or unsuitable "
        "for your intended use. You are solely responsible for reviewing, editing, validating, "
        "and deciding whether to use any output generated through the app.\n"
        "To the maximum extent permitted by applicable law, Orvelline disclaims responsibility "
        "and liability for any claims, losses, damages, liabilities, costs, or consequences "
        "arising out of or related to your use of Quillmender, your reliance on generated output, "
        "or any third-party model provider services connected to it.");
}

TEST_F(AboutWindowTest, NameStandsBesideItsSymbolInThirtyPoints) {
    show();
    const auto *symbol = window()->findChild<SymbolView *>();
    EXPECT_EQ(symbol->symbol().toStdString(), "text.quote");
    const TextLabel *name = labels().first();
    EXPECT_GE(name->font().pixelSize(), 30);
    EXPECT_EQ(name->font().weight(), QFont::DemiBold);
    EXPECT_EQ(symbol->mapTo(window(), QPoint()).x(), 24);
    EXPECT_GT(name->mapTo(window(), QPoint()).x(), symbol->mapTo(window(), QPoint()).x());
    const TextLabel *version = labels()[1];
    EXPECT_EQ(version->mapTo(window(), QPoint()).x(), 24);
    const TextLabel *author = labels()[2];
    EXPECT_EQ(author->y() - version->geometry().bottom() - 1, 18);
}

TEST_F(AboutWindowTest, WindowIsTitledFixedAndMinimisable) {
    show();
    EXPECT_EQ(window()->windowTitle().toStdString(), "About Quillmender");
    EXPECT_EQ(window()->size(), QSize(520, 420));
    EXPECT_EQ(window()->minimumSize(), window()->maximumSize());
    EXPECT_TRUE(window()->windowFlags() & Qt::WindowCloseButtonHint);
    EXPECT_TRUE(window()->windowFlags() & Qt::WindowMinimizeButtonHint);
    EXPECT_FALSE(window()->windowFlags() & Qt::WindowMaximizeButtonHint);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(window())->role(), QAccessible::Window);
}

TEST_F(AboutWindowTest, GetsItsAttributesWheneverTheNativeWindowIsMade) {
    show();
    const QWindow *handle = window()->windowHandle();
    EXPECT_EQ(ownWindows.calls, QList<Call>({{QStringLiteral("applyWindowAttributes"), handle},
                                             {QStringLiteral("activate"), handle}}));
    ownWindows.calls.clear();
    window()->setParent(nullptr, window()->windowFlags());
    show();
    EXPECT_EQ(ownWindows.calls.first(),
              (Call{QStringLiteral("applyWindowAttributes"), window()->windowHandle()}));
}

TEST_F(AboutWindowTest, OpeningTwiceCentresTheOneWindowInFront) {
    show();
    window()->move(0, 0);
    QWidget other;
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    show();
    const QPoint off =
        window()->frameGeometry().center() - window()->screen()->availableGeometry().center();
    EXPECT_LE(off.manhattanLength(), 2);
    EXPECT_EQ(ownWindows.calls.last(),
              (Call{QStringLiteral("activate"), window()->windowHandle()}));
    EXPECT_TRUE(window()->isActiveWindow());
}

TEST_F(AboutWindowTest, KeysScrollToTheEndOfTheNotice) {
    show();
    QScrollBar *bar = window()->findChild<QScrollArea *>()->verticalScrollBar();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar->maximum() > 0; }, 5000));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
    EXPECT_GT(bar->value(), 0);
}

TEST_F(AboutWindowTest, ClosingOnlyHides) {
    show();
    EXPECT_TRUE(window()->close());
    EXPECT_FALSE(window()->isVisible());
    EXPECT_FALSE(window()->testAttribute(Qt::WA_QuitOnClose));
    EXPECT_FALSE(window()->testAttribute(Qt::WA_DeleteOnClose));
    show();
    EXPECT_TRUE(window()->isVisible());
}

} // namespace quillmender
