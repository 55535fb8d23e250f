#include "SettingsWindowFixture.h"

#include <QAccessible>
#include <QBackingStore>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>

namespace quillmender {

namespace {

class SettingsWindowTest : public SettingsWindowFixture {};

} // namespace

TEST_F(SettingsWindowTest, IsTitledFixedAndMinimisable) {
    show();
    EXPECT_EQ(window()->windowTitle().toStdString(), "Quillmender Settings");
    EXPECT_EQ(window()->size(),
              QSize(760, std::min(820, window()->screen()->availableSize().height() - 48)));
    EXPECT_EQ(window()->minimumSize(), window()->maximumSize());
    EXPECT_TRUE(window()->windowFlags() & Qt::WindowCloseButtonHint);
    EXPECT_TRUE(window()->windowFlags() & Qt::WindowMinimizeButtonHint);
    EXPECT_FALSE(window()->windowFlags() & Qt::WindowMaximizeButtonHint);
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(window());
    EXPECT_EQ(interface->role(), QAccessible::Window);
    EXPECT_EQ(interface->text(QAccessible::Name).toStdString(), "Quillmender Settings");
}

TEST_F(SettingsWindowTest, OpeningTwiceIsTheSameWindowAtTheSameSize) {
    show();
    const HostedWindow *first = window();
    const QSize size = window()->size();
    window()->close();
    controller().centre();
    show();
    EXPECT_EQ(window(), first);
    EXPECT_EQ(window()->size(), size);
    const QRect available = window()->screen()->availableGeometry();
    EXPECT_LE(qAbs(window()->geometry().center().x() - available.center().x()), 1);
    EXPECT_TRUE(available.contains(window()->geometry()));
    EXPECT_EQ(ownWindows.calls.last(),
              (Call{QStringLiteral("activate"), window()->windowHandle()}));
}

TEST_F(SettingsWindowTest, CloseAndTheTitleBarOnlyHide) {
    show();
    button("Close")->click();
    EXPECT_FALSE(window()->isVisible());
    EXPECT_FALSE(window()->testAttribute(Qt::WA_QuitOnClose));
    show();
    EXPECT_TRUE(window()->close());
    EXPECT_FALSE(window()->isVisible());
}

TEST_F(SettingsWindowTest, KeepsNoPixelsWhileItIsHidden) {
    show();
    EXPECT_TRUE(QTest::qWaitFor([this] { return window()->backingStore()->size().width() > 700; }));
    window()->close();
    EXPECT_EQ(window()->backingStore()->size(), QSize(1, 1));
    show();
    EXPECT_TRUE(QTest::qWaitFor([this] { return window()->backingStore()->size().width() > 700; }));
}

TEST_F(SettingsWindowTest, ComesBackWhenMinimised) {
    show();
    window()->showMinimized();
    controller().makeKeyAndOrderFront();
    EXPECT_FALSE(window()->isMinimized());
    EXPECT_TRUE(window()->isVisible());
}

TEST_F(SettingsWindowTest, KeysAreReadWhenItIsFirstShown) {
    controller();
    log->clear();
    show();
    QStringList reads;
    for (const QString &call : *log)
        if (call.startsWith(QLatin1String("find ")))
            reads.append(call.section(u' ', 1, 1));
    EXPECT_EQ(reads.join(u'|').toStdString(),
              "com.quillmender.openAI|com.quillmender.anthropic|com.quillmender.gemini");
    window()->close();
    log->clear();
    show();
    EXPECT_EQ(log->filter(QStringLiteral("find ")), QStringList());
}

TEST_F(SettingsWindowTest, AppearsBeforeItsKeysAndFillsThem) {
    secrets.items[{QStringLiteral("com.quillmender.openAI"), QStringLiteral("api-key")}] = "stored";
    secrets.items[{QStringLiteral("com.quillmender.gemini"), QStringLiteral("api-key")}] = "other";
    secrets.hold();
    show();
    TextField *key = field("OpenAI API Key");
    EXPECT_EQ(key->text(), QString());
    replaceText(field("Gemini API Key"), QStringLiteral("typed"));
    secrets.release();
    EXPECT_TRUE(QTest::qWaitFor([&] { return key->text() == QLatin1String("stored"); }));
    EXPECT_EQ(field("Gemini API Key")->text().toStdString(), "typed");
    EXPECT_FALSE(key->isUndoAvailable());
}

TEST_F(SettingsWindowTest, LoginItemIsReadAtEachShow) {
    show();
    window()->close();
    loginItem.current = LoginItemStatus::enabled;
    EXPECT_FALSE(store().launchAtLoginEnabled());
    show();
    EXPECT_TRUE(store().launchAtLoginEnabled());
    EXPECT_TRUE(shows("Quillmender will open automatically when you log in."));
    EXPECT_EQ(log->filter(QStringLiteral("registerItem")), QStringList());
}

TEST_F(SettingsWindowTest, FloatsWhileThePanelDoes) {
    const auto floats = [this] {
        return bool(window()->windowHandle()->flags() & Qt::WindowStaysOnTopHint);
    };
    show();
    EXPECT_FALSE(floats());
    ActionPanel panel(new QWidget);
    panel.show();
    show();
    EXPECT_TRUE(floats());
    panel.hide();
    EXPECT_FALSE(floats());
    EXPECT_TRUE(window()->isVisible());
    panel.show();
    EXPECT_FALSE(floats()) << "not before it is brought to the front again";
}

TEST_F(SettingsWindowTest, ScrollsAndStartsAtTheTop) {
    show();
    QScrollBar *bar = window()->findChild<QScrollArea *>()->verticalScrollBar();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar->maximum() > 0; }, 5000));
    bar->setValue(bar->maximum());
    window()->close();
    show();
    EXPECT_EQ(bar->value(), 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
    EXPECT_GT(bar->value(), 0);
}

} // namespace quillmender
