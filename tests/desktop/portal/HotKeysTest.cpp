#include "desktop/portal/PortalTest.h"
#include "platform/linux/portal/PortalHotKeys.h"
#include "platform/linux/portal/PortalShortcut.h"

#include <QDBusObjectPath>

namespace quillmender {
namespace {

using portal::PortalShortcut;
using portal::PortalShortcuts;
using test::runTask;
using testing::ElementsAre;

constexpr QKeyCombination asked = Qt::ControlModifier | Qt::AltModifier | Qt::Key_Space;
const QString interface = QStringLiteral("GlobalShortcuts");
const QString list = QStringLiteral("GlobalShortcuts.ListShortcuts");
const QString bind = QStringLiteral("GlobalShortcuts.BindShortcuts");

QVariant shortcutsWith(const QString &trigger) {
    const PortalShortcut ours{QStringLiteral("transform"),
                              {{QStringLiteral("trigger_description"), trigger}}};
    return QVariant::fromValue(PortalShortcuts{ours});
}

class HotKeysTest : public PortalTest {
  protected:
    HotKeysTest() { portal::registerPortalShortcuts(); }

    static QVariantMap bound(const QString &trigger = QStringLiteral("Ctrl+Alt+Space")) {
        return {{QStringLiteral("shortcuts"), shortcutsWith(trigger)}};
    }

    HotKeyOutcome hold() {
        return runTask(hotKeys_.hold(asked, [this] { ++presses_; }));
    }

    void tell(const QString &signal, const QString &id = QStringLiteral("transform")) {
        fake_->send(QStringLiteral("/org/freedesktop/portal/desktop"), interface, signal,
                    {QVariant::fromValue(QDBusObjectPath(fake_->session())), id, quint64{1},
                     QVariantMap()});
    }

    void tellKeys(const QVariant &shortcuts) {
        fake_->send(QStringLiteral("/org/freedesktop/portal/desktop"), interface,
                    QStringLiteral("ShortcutsChanged"),
                    {QVariant::fromValue(QDBusObjectPath(fake_->session())), shortcuts});
    }

    portal::PortalHotKeys hotKeys_{portal_};
    int presses_ = 0;
};

TEST_F(HotKeysTest, WhatIsBoundAlreadyIsNotBoundAgain) {
    fake_->grant(list, bound());
    {
        const HotKeyOutcome held = hold();
        ASSERT_TRUE(held.hotKey) << held.reason.toStdString();
        EXPECT_EQ(held.hotKey->keys(), asked);
        EXPECT_THAT(fake_->asked(),
                    ElementsAre(QStringLiteral("Registry.Register"),
                                QStringLiteral("GlobalShortcuts.CreateSession"), list));
    }
    EXPECT_TRUE(harness::becomesTrue(
        [&] { return fake_->asked().endsWith(QStringLiteral("Session.Close")); }));
}

TEST_F(HotKeysTest, WhatIsNotBoundIsBoundAndTheAnswerBelieved) {
    fake_->set(bind, {2, bound(QStringLiteral("Press <Super>j"))});
    const HotKeyOutcome held = hold();
    ASSERT_TRUE(held.hotKey) << held.reason.toStdString();
    EXPECT_EQ(held.hotKey->keys(), QKeyCombination(Qt::MetaModifier | Qt::Key_J));
    EXPECT_EQ(fake_->asked().constLast(), bind);
}

TEST_F(HotKeysTest, TheUserMayRefuseAndTheDesktopMayHaveNone) {
    fake_->set(bind, {1, {}});
    const HotKeyOutcome refused = hold();
    EXPECT_FALSE(refused.hotKey);
    EXPECT_EQ(refused.reason, QStringLiteral("the user has not agreed"));
    fake_->set(bind, {0, {}});
    EXPECT_FALSE(hold().hotKey) << "granted, and nothing bound";
    fake_->forget();
    fake_->set(QStringLiteral("GlobalShortcuts.version"), {0, {}, Manner::refused});
    EXPECT_FALSE(hold().hotKey);
    EXPECT_FALSE(fake_->asked().contains(QStringLiteral("GlobalShortcuts.CreateSession")));
}

TEST_F(HotKeysTest, AListThatIsNotToldBindsNothing) {
    fake_->set(list, {2, {}});
    EXPECT_FALSE(hold().hotKey);
    EXPECT_FALSE(fake_->asked().contains(bind));
}

TEST_F(HotKeysTest, APressIsOneHoweverOftenItIsTold) {
    fake_->grant(list, bound());
    const HotKeyOutcome held = hold();
    ASSERT_TRUE(held.hotKey);
    for (int i = 0; i < 5; ++i)
        tell(QStringLiteral("Activated"));
    tell(QStringLiteral("Activated"), QStringLiteral("another"));
    ASSERT_TRUE(harness::becomesTrue([&] { return presses_ > 0; }));
    tell(QStringLiteral("Deactivated"));
    tell(QStringLiteral("Activated"));
    tell(QStringLiteral("Activated"));
    EXPECT_TRUE(harness::becomesTrue([&] { return presses_ >= 2; }));
    tellKeys(shortcutsWith({}));
    EXPECT_TRUE(harness::becomesTrue([&] { return !held.hotKey->keys(); }));
    EXPECT_EQ(presses_, 2);
}

TEST_F(HotKeysTest, KeysThatTheUserChangesAreFollowed) {
    fake_->grant(list, bound(QStringLiteral("Strg+Alt+Leertaste")));
    const HotKeyOutcome held = hold();
    ASSERT_TRUE(held.hotKey);
    EXPECT_EQ(held.hotKey->keys(), asked) << "words of another language";
    tellKeys(shortcutsWith(QStringLiteral("Meta+F7")));
    EXPECT_TRUE(harness::becomesTrue(
        [&] { return held.hotKey->keys() == QKeyCombination(Qt::MetaModifier | Qt::Key_F7); }));
    tellKeys(QStringLiteral("nonsense"));
    EXPECT_TRUE(harness::becomesTrue([&] { return !held.hotKey->keys(); }));
}

TEST_F(HotKeysTest, APortalThatHasComeBackHoldsItAgain) {
    fake_->grant(list, bound());
    const HotKeyOutcome held = hold();
    ASSERT_TRUE(held.hotKey);
    int changes = 0;
    QObject::connect(held.hotKey.get(), &HeldHotKey::keysChanged, [&changes] { ++changes; });
    fake_.reset();
    ASSERT_TRUE(harness::becomesTrue([&] { return changes == 1; }));
    EXPECT_FALSE(held.hotKey->keys());
    fake_.emplace();
    fake_->grant(list, bound());
    ASSERT_TRUE(harness::becomesTrue([&] { return changes == 2; }));
    EXPECT_EQ(held.hotKey->keys(), asked);
    EXPECT_EQ(fake_->asked().constFirst(), QStringLiteral("Registry.Register"));
    tell(QStringLiteral("Activated"));
    EXPECT_TRUE(harness::becomesTrue([&] { return presses_ == 1; }));
}

TEST_F(HotKeysTest, ASessionThatThePortalClosesIsOpenedAgain) {
    fake_->grant(list, bound());
    const HotKeyOutcome held = hold();
    ASSERT_TRUE(held.hotKey);
    fake_->forget();
    fake_->send(fake_->session(), QStringLiteral("Session"), QStringLiteral("Closed"), {});
    EXPECT_TRUE(harness::becomesTrue([&] { return !held.hotKey->keys(); }));
    EXPECT_TRUE(harness::becomesTrue([&] { return held.hotKey->keys() == asked; }));
}

TEST(TriggerTest, KeysAreSaidInTheWordsOfTheStandard) {
    EXPECT_EQ(portal::triggerFor(asked), QStringLiteral("CTRL+ALT+space"));
    EXPECT_EQ(portal::triggerFor(Qt::MetaModifier | Qt::ShiftModifier | Qt::Key_J),
              QStringLiteral("SHIFT+LOGO+j"));
    EXPECT_EQ(portal::triggerFor(Qt::Key_F5), QString());
}

} // namespace
} // namespace quillmender
