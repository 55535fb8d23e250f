#include "desktop/harness/DesktopTest.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/TestApplication.h"

#include <QDir>

namespace quillmender::harness {
namespace {

class ServicesTest : public DesktopTest {};

TEST_F(ServicesTest, KeyringKeepsSecrets) {
    Keyring &keyring = *desktop().keyring();
    const QString service = QStringLiteral("a service");
    const QString account = QStringLiteral("an account");
    keyring.store(service, account, "a secret");
    EXPECT_EQ(keyring.lookup(service, account), "a secret");
    keyring.store(service, account, "another");
    EXPECT_EQ(keyring.lookup(service, account), "another");
    keyring.clear(service, account);
    EXPECT_EQ(keyring.lookup(service, account), "");
}

TEST_F(ServicesTest, AccessibilitySwitchDecidesWhoIsOnTheBus) {
    startDesktop({.accessibilityEnabled = false});
    EXPECT_FALSE(desktop().accessibilityBus()->isEnabled());
    const auto hidden = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
    EXPECT_FALSE(desktop().accessible().application(hidden.pid()).has_value());
    desktop().accessibilityBus()->setEnabled(true);
    const auto shown = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
    EXPECT_TRUE(
        becomesTrue([&] { return desktop().accessible().application(shown.pid()).has_value(); }));
}

TEST_F(ServicesTest, DesktopCanBeWithoutThem) {
    startDesktop({.accessibilityBus = false, .keyring = false});
    EXPECT_EQ(desktop().accessibilityBus(), nullptr);
    EXPECT_EQ(desktop().keyring(), nullptr);
    EXPECT_THROW(desktop().accessible(), HarnessError);
    EXPECT_FALSE(desktop().sessionBus().hasOwner(QStringLiteral("org.a11y.Bus")));
    EXPECT_FALSE(desktop().sessionBus().hasOwner(QStringLiteral("org.freedesktop.secrets")));
}

TEST_F(ServicesTest, DesktopsAreSeparate) {
    Desktop other;
    EXPECT_NE(desktop().display(), other.display());
    EXPECT_NE(desktop().sessionBus().address(), other.sessionBus().address());
    EXPECT_NE(desktop().accessibilityBus()->address(), other.accessibilityBus()->address());
    desktop().keyring()->store(QStringLiteral("s"), QStringLiteral("a"), "here only");
    EXPECT_EQ(other.keyring()->lookup(QStringLiteral("s"), QStringLiteral("a")), "");
}

TEST_F(ServicesTest, ArtifactsHaveAPictureAndEveryLog) {
    const QTemporaryDir folder;
    auto editor = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
    desktop().keepArtifacts(folder.path());
    const QImage picture(folder.filePath(QStringLiteral("screen.png")));
    EXPECT_EQ(picture.size(), QSize(1280, 900));
    for (const char *name : {"x-server.log", "window-manager.log", "session-bus.log",
                             "accessibility-bus.log", "keyring.log", "sample-editor.log"})
        EXPECT_TRUE(QFile::exists(folder.filePath(QString::fromLatin1(name)))) << name;
}

} // namespace
} // namespace quillmender::harness
