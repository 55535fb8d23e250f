#include "desktop/presence/PresenceFixture.h"
#include "desktop/presence/StatusHost.h"

#include <QDBusArgument>

namespace quillmender {
namespace {

using harness::waitUntil;

const QString settingsTitle = QStringLiteral("Quillmender Settings");
const QString aboutTitle = QStringLiteral("About Quillmender");
enum Line { transform, settings, update, about, quit };

class StatusItemTest : public PresenceFixture {
  protected:
    void SetUp() override {
        PresenceFixture::SetUp();
        host_.emplace(desktop().sessionBus().address());
        startProgram();
        item_ = host().waitForItem();
    }

    void TearDown() override {
        PresenceFixture::TearDown();
        host_.reset();
    }

    const StatusHost &host() const { return *host_; }
    QVariant property(const char *name) const {
        return host().property(item_, QLatin1String(name));
    }
    QList<MenuLine> menu() const { return host().menu(item_); }
    void pick(Line line) const { host().pick(item_, line); }

  private:
    std::optional<StatusHost> host_;
    QString item_;
};

/// The sizes of the pictures in a property of the type a(iiay).
QList<QSize> pictureSizes(const QVariant &pictures) {
    const auto argument = pictures.value<QDBusArgument>();
    QList<QSize> sizes;
    argument.beginArray();
    while (!argument.atEnd()) {
        QSize size;
        QByteArray pixels;
        argument.beginStructure();
        argument >> size.rwidth() >> size.rheight() >> pixels;
        argument.endStructure();
        EXPECT_EQ(pixels.size(), size.width() * size.height() * 4);
        EXPECT_GT(QByteArray(pixels).replace('\0', QByteArray()).size(), 0);
        sizes.append(size);
    }
    argument.endArray();
    return sizes;
}

QString toolTipTitle(const QVariant &toolTip) {
    const auto argument = toolTip.value<QDBusArgument>();
    QString icon;
    QString title;
    argument.beginStructure();
    argument >> icon;
    argument.beginArray();
    while (!argument.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray pixels;
        argument.beginStructure();
        argument >> width >> height >> pixels;
        argument.endStructure();
    }
    argument.endArray();
    QString text;
    argument >> title >> text;
    argument.endStructure();
    return title;
}

TEST_F(StatusItemTest, IconToolTipAndStatus) {
    EXPECT_EQ(property("Status").toString(), QStringLiteral("Active"));
    EXPECT_EQ(property("Category").toString(), QStringLiteral("ApplicationStatus"));
    EXPECT_EQ(property("Title").toString(), QStringLiteral("Quillmender"));
    EXPECT_EQ(toolTipTitle(property("ToolTip")), QStringLiteral("Quillmender"));
    const QList<QSize> sizes = pictureSizes(property("IconPixmap"));
    EXPECT_TRUE(sizes.contains(QSize(22, 22)));
    EXPECT_TRUE(sizes.contains(QSize(16, 16)));
}

TEST_F(StatusItemTest, MenuHasItsFiveLinesInOrder) {
    const QList<MenuLine> lines = menu();
    QStringList shown;
    for (const MenuLine &line : lines)
        shown.append(
            QStringLiteral("%1|%2|%3")
                .arg(line.label(), line.shortcut(),
                     line.isVisible() ? QStringLiteral("shown") : QStringLiteral("hidden")));
    EXPECT_EQ(shown.join(u'\n').toStdString(), "Transform|Control+Alt+Space|shown\n"
                                               "Settings|Control+,|shown\n"
                                               "Download Latest Version||hidden\n"
                                               "About||shown\n"
                                               "Quit Quillmender|Control+Q|shown");
}

TEST_F(StatusItemTest, EachLineDoesWhatItSays) {
    pick(settings);
    waitForWindow(settingsTitle);
    pick(about);
    waitForWindow(aboutTitle);
    closeWindow(aboutTitle);
    closeWindow(settingsTitle);
    pick(transform);
    waitForWindow(QStringLiteral("Quillmender"));
    EXPECT_TRUE(program().process().isRunning());
    pick(quit);
    waitUntilProgramHasEnded();
    EXPECT_EQ(program().process().exitCode(), 0);
    waitUntil([this] { return host().items().isEmpty(); }, QStringLiteral("the item is gone"));
}

TEST_F(StatusItemTest, NoWindowIsShownAtStart) {
    EXPECT_EQ(desktop().windows().ofProcess(program().pid()), XCB_WINDOW_NONE);
}

TEST_F(StatusItemTest, AKilledProgramLeavesNothingInTheWayOfTheNext) {
    const QString before = host().items().constFirst();
    program().process().kill();
    waitUntil([this] { return host().items().isEmpty(); }, QStringLiteral("the item is gone"));
    EXPECT_FALSE(desktop().sessionBus().hasOwner(QStringLiteral("com.quillmender.Quillmender")));

    startProgram();
    const QString after = host().waitForItem();
    EXPECT_NE(after, before);
    EXPECT_EQ(host().menu(after).size(), 5);
    desktop().input().chord({0xffe3 /* Control */, 0xffe9 /* Alt */, 0x20 /* space */});
    waitForWindow(QStringLiteral("Quillmender"));
}

} // namespace
} // namespace quillmender
