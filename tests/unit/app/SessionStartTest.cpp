#include "CoordinatorFixture.h"

namespace quillmender {
namespace {

class SessionStartTest : public CoordinatorFixture {};

TEST_F(SessionStartTest, CapturesThenShowsThePanel) {
    select(QStringLiteral("some words"));
    coordinator->beginWorkflow();
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("access.ask"),
                        QStringLiteral("make panel"),
                        QStringLiteral("access.isGranted"),
                        QStringLiteral("frontmostApplication"),
                        QStringLiteral("pasteboard.itemsWithin 1000"),
                        QStringLiteral("pasteboard.changeCount"),
                        QStringLiteral("focus.read"),
                        QStringLiteral("frontmostApplication"),
                        QStringLiteral("centre"),
                        QStringLiteral("makeKeyAndOrderFront"),
                    }));
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("some words"));
    EXPECT_EQ(coordinator->captureTitle(), QStringLiteral("Selected Text"));
    EXPECT_EQ(coordinator->captureDescription(),
              QStringLiteral("Using only the highlighted text."));
    EXPECT_EQ(coordinator->errorMessage(), std::nullopt);
    ASSERT_NE(coordinator->currentSession(), nullptr);
}

TEST_F(SessionStartTest, DescribesAWholeField) {
    focus->reading.value = QStringLiteral("all of it");
    coordinator->beginWorkflow();
    EXPECT_EQ(coordinator->captureTitle(), QStringLiteral("Captured Field"));
    EXPECT_EQ(coordinator->captureDescription(),
              QStringLiteral("No selection was found, so Quillmender captured the full focused "
                             "text field."));
}

TEST_F(SessionStartTest, WithoutAccessSendsNoKeyAndSaysSo) {
    capture(QStringLiteral("earlier"));
    access->granted = false;
    coordinator->beginWorkflow();
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("access.ask"),
                        QStringLiteral("access.isGranted"),
                        QStringLiteral("frontmostApplication"),
                        QStringLiteral("centre"),
                        QStringLiteral("makeKeyAndOrderFront"),
                    }));
    EXPECT_EQ(coordinator->currentSession(), nullptr);
    EXPECT_EQ(coordinator->selectedTextPreview(), QString());
    EXPECT_EQ(coordinator->errorMessage(),
              QStringLiteral("Quillmender needs Accessibility access to read and replace selected "
                             "text across apps."));
    EXPECT_EQ(coordinator->captureDescription(),
              QStringLiteral("Using only the highlighted text."));
    EXPECT_FALSE(coordinator->accessibilityGranted());
}

TEST_F(SessionStartTest, ASecondPressDuringTheCaptureChangesNothing) {
    clock->duringSleep = [this](int) { coordinator->beginWorkflow(); };
    coordinator->beginWorkflow();
    EXPECT_EQ(log->count(QStringLiteral("access.isGranted")), 1);
    EXPECT_EQ(log->count(QStringLiteral("makeKeyAndOrderFront")), 1);
}

TEST_F(SessionStartTest, ACaptureThatEndsWithTheProgramShowsNothing) {
    clock->duringSleep = [this](int) { coordinator->endOperations(std::chrono::seconds(20)); };
    coordinator->beginWorkflow();
    EXPECT_GT(clock->sleeps, 0);
    EXPECT_FALSE(log->contains(QStringLiteral("makeKeyAndOrderFront")));
}

TEST_F(SessionStartTest, AFailedCaptureShowsItsMessage) {
    capture(QStringLiteral("earlier"));
    workspace->frontmost = nullptr;
    coordinator->beginWorkflow();
    EXPECT_EQ(coordinator->currentSession(), nullptr);
    EXPECT_EQ(coordinator->selectedTextPreview(), QString());
    EXPECT_EQ(coordinator->captureTitle(), QStringLiteral("Selected Text"));
    EXPECT_EQ(coordinator->captureDescription(), QString());
    EXPECT_EQ(coordinator->errorMessage(),
              QStringLiteral("Quillmender could not determine the frontmost app."));
    EXPECT_EQ(log->last(), QStringLiteral("makeKeyAndOrderFront"));
}

TEST_F(SessionStartTest, ReusesThePanel) {
    capture(QStringLiteral("one"));
    select(QStringLiteral("two"));
    coordinator->beginWorkflow();
    EXPECT_FALSE(log->contains(QStringLiteral("make panel")));
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("two"));
}

TEST_F(SessionStartTest, APressDuringTheCaptureAsksForTheSamePanel) {
    focus->reading.element = nullptr;
    clock->duringSleep = [this](int sleep) {
        if (sleep == 1)
            coordinator->beginWorkflow();
    };
    coordinator->beginWorkflow();
    EXPECT_EQ(log->count(QStringLiteral("pasteboard.itemsWithin 1000")), 1);
    EXPECT_EQ(log->count(QStringLiteral("makeKeyAndOrderFront")), 1);
}

TEST_F(SessionStartTest, APressDuringALateCaptureStartsAnew) {
    fakes::Gate gate;
    focus->gate = &gate;
    select(QStringLiteral("of an application that hangs"));
    coordinator->beginWorkflow();
    const auto captures = [this] { return log->count(QStringLiteral("focus.read")); };
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            coordinator->beginWorkflow();
            return captures() > 1;
        },
        20'000));
    EXPECT_EQ(captures(), 2);

    focus->gate = nullptr;
    select(QStringLiteral("of another"));
    EXPECT_FALSE(panel->isVisible);
    gate.open();
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("of another"));
    EXPECT_EQ(log->count(QStringLiteral("makeKeyAndOrderFront")), 1);
}

TEST_F(SessionStartTest, ACaptureThatWasGivenUpShowsNothing) {
    fakes::Gate gate;
    focus->gate = &gate;
    coordinator->beginWorkflow();
    focus->gate = nullptr;
    select(QStringLiteral("of another"));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            coordinator->beginWorkflow();
            return panel && panel->isVisible;
        },
        20'000));
    const SelectionSessionRef session = coordinator->currentSession();

    select(QStringLiteral("of the application that hung"));
    gate.open();
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("of another"));
    EXPECT_EQ(coordinator->currentSession(), session);
    EXPECT_EQ(log->count(QStringLiteral("makeKeyAndOrderFront")), 1);
}

TEST_F(SessionStartTest, AsksForAccessAndContinuesWhenItIsGranted) {
    access->granted = false;
    coordinator->beginWorkflow();
    log->clear();
    coordinator->requestAccessibilityAccess();
    EXPECT_EQ(*log,
              QStringList({QStringLiteral("access.request"), QStringLiteral("access.isGranted")}));
    access->grantsOnRequest = true;
    select(QStringLiteral("words"));
    coordinator->requestAccessibilityAccess();
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("words"));
}

TEST_F(SessionStartTest, StartsItsPartsInOrder) {
    coordinator->start();
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("showStatusItem"),
                        QStringLiteral("hold Ctrl+Alt+Space"),
                        QStringLiteral("send"),
                    }));
    const StatusItemContents &item = statusItem->contents;
    EXPECT_EQ(item.symbol, QStringLiteral("text.quote"));
    EXPECT_EQ(item.toolTip, QStringLiteral("Quillmender"));
    EXPECT_EQ(item.accessibilityDescription, QStringLiteral("Quillmender"));
    QStringList titles;
    for (const StatusMenuItem &entry : item.menu)
        titles.append(entry.hidden ? u'(' + entry.title + u')' : entry.title);
    EXPECT_EQ(titles, QStringList({QStringLiteral("Transform"), QStringLiteral("Settings"),
                                   QStringLiteral("(Download Latest Version)"),
                                   QStringLiteral("About"), QStringLiteral("Quit Quillmender")}));
    EXPECT_EQ(item.menu[0].shortcut,
              QKeyCombination(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space));
    EXPECT_EQ(item.menu[1].shortcut, QKeyCombination(Qt::MetaModifier, Qt::Key_Comma));
    EXPECT_EQ(item.menu[2].shortcut, std::nullopt);
    EXPECT_EQ(item.menu[3].shortcut, std::nullopt);
    EXPECT_EQ(item.menu[4].shortcut, QKeyCombination(Qt::MetaModifier, Qt::Key_Q));
}

TEST_F(SessionStartTest, TheMenuDoesWhatItSays) {
    coordinator->start();
    log->clear();
    statusItem->contents.menu[1].handler();
    statusItem->contents.menu[2].handler();
    statusItem->contents.menu[3].handler();
    statusItem->contents.menu[4].handler();
    EXPECT_EQ(*log, QStringList({QStringLiteral("show settings"), QStringLiteral("show about"),
                                 QStringLiteral("terminate")}));
    statusItem->contents.menu[0].handler();
    EXPECT_EQ(log->last(), QStringLiteral("makeKeyAndOrderFront"));
}

TEST_F(SessionStartTest, SettingsChangesRedrawThePanel) {
    int changes = 0;
    QObject::connect(coordinator.get(), &Observable::objectWillChange, coordinator.get(),
                     [&] { ++changes; });
    coordinator->settingsStore().hideBuiltInAction(TextAction::formalize);
    EXPECT_GE(changes, 1);
    EXPECT_EQ(coordinator->actions().size(), 6);
}

TEST_F(SessionStartTest, ACaptureIsPublishedInItsOrderBeforeThePanelShows) {
    focus->reading.value = QStringLiteral("all of it");
    coordinator->run(coordinator->actions().constFirst());
    PublishedChanges changes(*coordinator);
    bool wasVisible = false;
    QObject::connect(coordinator.get(), &Observable::objectWillChange, coordinator.get(),
                     [&] { wasVisible = wasVisible || (panel && panel->isVisible); });
    coordinator->beginWorkflow();
    EXPECT_EQ(
        changes.take(),
        QStringList({QStringLiteral("preview: all of it"), QStringLiteral("title: Captured Field"),
                     QStringLiteral("description: No se"), QStringLiteral("error: none"),
                     QStringLiteral("session: all of it")}));
    EXPECT_FALSE(wasVisible);
}

TEST_F(SessionStartTest, ARefusalIsPublishedInItsOrder) {
    focus->reading.value = QStringLiteral("all of it");
    coordinator->beginWorkflow();
    coordinator->run(coordinator->actions().constFirst());
    access->granted = false;
    PublishedChanges changes(*coordinator);
    coordinator->beginWorkflow();
    EXPECT_EQ(
        changes.take(),
        QStringList({QStringLiteral("session: none"), QStringLiteral("preview: "),
                     QStringLiteral("error: Quillmender needs Ac"), QStringLiteral("action: ")}));
    EXPECT_EQ(coordinator->captureTitle(), QStringLiteral("Captured Field"));
    EXPECT_TRUE(coordinator->isWorking());
}

TEST_F(SessionStartTest, AFailedCaptureIsPublishedInItsOrder) {
    focus->reading.value = QStringLiteral("all of it");
    coordinator->beginWorkflow();
    coordinator->run(coordinator->actions().constFirst());
    workspace->frontmost = nullptr;
    PublishedChanges changes(*coordinator);
    coordinator->beginWorkflow();
    EXPECT_EQ(
        changes.take(),
        QStringList({QStringLiteral("session: none"), QStringLiteral("preview: "),
                     QStringLiteral("description: "), QStringLiteral("title: Selected Text"),
                     QStringLiteral("error: Quillmender could no"), QStringLiteral("action: ")}));
}

TEST_F(SessionStartTest, NothingIsShownBeforeItStarts) {
    EXPECT_EQ(coordinator->captureTitle(), QStringLiteral("Selected Text"));
    EXPECT_EQ(coordinator->captureDescription(), QString());
    EXPECT_EQ(coordinator->selectedTextPreview(), QString());
    EXPECT_EQ(coordinator->errorMessage(), std::nullopt);
    EXPECT_FALSE(coordinator->isWorking());
    EXPECT_FALSE(coordinator->availableUpdate());
    EXPECT_TRUE(coordinator->accessibilityGranted()) << "as it is when it is made";
    EXPECT_EQ(panel, nullptr);
}

TEST_F(SessionStartTest, TheHotKeyStartsASession) {
    coordinator->start();
    select(QStringLiteral("words"));
    hotKeys->press();
    EXPECT_EQ(panel, nullptr) << "not within the press";
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("words"));
    EXPECT_TRUE(panel->isVisible);
}

TEST_F(SessionStartTest, TheSettingsKnowWhichKeysAreHeld) {
    hotKeys->isTaken = true;
    coordinator->start();
    const SettingsStore &settings = coordinator->settingsStore();
    EXPECT_EQ(settings.hotKeyDisplay(), QStringLiteral("Control + Option + Space"));
    EXPECT_NE(settings.hotKeyStatusMessage(), std::nullopt);
    hotKeys->held->setKeys(QKeyCombination(Qt::MetaModifier, Qt::Key_F12));
    EXPECT_EQ(settings.hotKeyDisplay(), QStringLiteral("Command + F12"));
    EXPECT_EQ(settings.hotKeyStatusMessage(), std::nullopt);
    hotKeys->held->setKeys(std::nullopt);
    EXPECT_EQ(settings.hotKeyDisplay(), QStringLiteral("Control + Option + Space"));
    EXPECT_NE(settings.hotKeyStatusMessage(), std::nullopt);
}

TEST_F(SessionStartTest, ThePreviewIsShortTheSessionIsWhole) {
    select(QString(181, u'a'));
    coordinator->beginWorkflow();
    EXPECT_EQ(coordinator->selectedTextPreview(), QString(180, u'a') + u'…');
    EXPECT_EQ(coordinator->currentSession()->selectedText, QString(181, u'a'));
}

TEST_F(SessionStartTest, ChangesOfThePermissionRedrawThePanel) {
    int changes = 0;
    QObject::connect(coordinator.get(), &Observable::objectWillChange, coordinator.get(),
                     [&] { ++changes; });
    coordinator->permissionManager().refresh();
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace quillmender
