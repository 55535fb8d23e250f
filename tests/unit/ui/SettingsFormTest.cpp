#include "SettingsWindowFixture.h"
#include "fakes/FakePermission.h"
#include "ui/PopUpButton.h"
#include "ui/ToggleSwitch.h"

#include <QClipboard>
#include <QSignalSpy>
#include <QWheelEvent>

namespace quillmender {

namespace {

class SettingsFormTest : public SettingsWindowFixture {
  protected:
    PopUpButton *provider() { return window()->findChild<PopUpButton *>(); }
    ToggleSwitch *launchAtLogin() { return window()->findChild<ToggleSwitch *>(); }
    TextLabel *label(const char *text) {
        for (TextLabel *candidate : shown<TextLabel>(window()))
            if (candidate->text() == QLatin1String(text))
                return candidate;
        return nullptr;
    }
};

} // namespace

TEST_F(SettingsFormTest, TextsAreThoseInTheirOrder) {
    permissions.refresh();
    loginItem.current = LoginItemStatus::notFound;
    for (const TextAction action : allTextActions)
        store().hideBuiltInAction(action);
    show();
    QStringList all;
    for (const QString &text : texts(window()))
        all.append(text);
    EXPECT_EQ(
        all.join(u'\n').toStdString(),
        "Settings\n"
        "Configure your provider, API key, and actions.\n"
        "Start by choosing your provider and adding its API key. After that, you can keep the "
        "starter actions, edit them, remove them, or create your own custom actions.\n"
        "Provider\n"
        "Active Provider\n"
        "Quillmender sends requests through the currently selected provider.\n"
        "Startup\n"
        "Launch at Login is unavailable for this build.\n"
        "OpenAI\nOpenAI API Key\nOpenAI Model\nOpenAI Endpoint\n"
        "Claude\nAnthropic API Key\nClaude Model\nAnthropic Endpoint\n"
        "Gemini\nGemini API Key\nGemini Model\nGemini Base URL\n"
        "For Gemini, use the models base URL. Quillmender appends `/<model>:generateContent` "
        "automatically.\n"
        "Security\n"
        "API keys are loaded from your macOS keychain when you open Settings or use a configured "
        "provider. Provider selection, models, endpoints, and actions are stored locally. Launch "
        "at login is managed by macOS Login Items.\n"
        "Shortcut\n"
        "Invoke Quillmender\nControl + Option + Space\n"
        "Select text in any app, then press the shortcut to open the action picker.\n"
        "Permissions\n"
        "Accessibility access is required so Quillmender can read the selected text and paste the "
        "transformed result back into the source app.\n"
        "Accessibility access granted\n"
        "Actions\n"
        "Every action becomes a button in the main picker. Use `{{text}}` where the captured text "
        "should be inserted.\n"
        "No actions available.");
    QStringList captions;
    for (const PushButton *each : shown<PushButton>(window()))
        captions.append(each->caption());
    EXPECT_EQ(captions.join(u'|').toStdString(),
              "Close|Open Login Items Settings|Refresh|Request Access|Open Privacy Settings|"
              "New Action|Restore Starter Actions");
    EXPECT_EQ(launchAtLogin()->text().toStdString(), "Launch Quillmender when I log in");
}

TEST_F(SettingsFormTest, ShortcutShowsTheKeysThatAreHeld) {
    show();
    const char *const status = "The shortcut does not work at the moment; another program may be "
                               "using these keys. Use Transform in the status menu instead.";
    EXPECT_TRUE(shows("Control + Option + Space"));
    EXPECT_FALSE(shows(status));
    store().setHeldHotKey(std::nullopt);
    settle();
    EXPECT_TRUE(shows("Control + Option + Space"));
    EXPECT_TRUE(shows(status));
    store().setHeldHotKey(QKeyCombination(Qt::MetaModifier, Qt::Key_F12));
    settle();
    EXPECT_FALSE(shows("Control + Option + Space"));
    EXPECT_TRUE(shows("Command + F12"));
    EXPECT_FALSE(shows(status));
}

TEST_F(SettingsFormTest, TellsWhatTheSessionLacks) {
    missing[Capability::chords] = QStringLiteral("Nothing can be copied here.");
    missing[Capability::hotKeys] = QStringLiteral("No shortcut can work here.");
    missing[Capability::hotKeys].remedy = QStringLiteral("Put these lines into a file:");
    missing[Capability::hotKeys].lines = QStringLiteral("<first>\n<second>");
    show();
    EXPECT_TRUE(shows("Nothing can be copied here."));
    EXPECT_FALSE(shows("No shortcut can work here.")) << "as long as one is held all the same";
    EXPECT_EQ(button("Copy"), nullptr);
    store().setHeldHotKey(std::nullopt);
    settle();
    EXPECT_TRUE(shows("No shortcut can work here."));
    EXPECT_TRUE(shows("Put these lines into a file:"));
    ASSERT_NE(button("Copy"), nullptr);
    button("Copy")->click();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("<first>\n<second>"));
    EXPECT_FALSE(shows("The shortcut does not work at the moment; another program may be using "
                       "these keys. Use Transform in the status menu instead."));
}

TEST_F(SettingsFormTest, AsksForWhatTheDesktopLetsItDoOnlyWhenTheUserWants) {
    const auto permission = std::make_shared<fakes::FakePermission>();
    missing[Capability::chords] = QStringLiteral("It could not be copied.");
    missing[Capability::chords].remedy = QStringLiteral("A window will ask you.");
    missing[Capability::chords].permission = permission;
    show();
    EXPECT_TRUE(shows("How it stands.")) << "not what it was at the start";
    EXPECT_FALSE(shows("It could not be copied."));
    EXPECT_FALSE(shows("A window will ask you."));
    EXPECT_EQ(button("Ask for Permission"), nullptr) << "nobody can be asked";

    permission->become(Permission::State::missing, QStringLiteral("Not yet."));
    settle();
    EXPECT_TRUE(shows("Not yet."));
    EXPECT_TRUE(shows("A window will ask you."));
    ASSERT_NE(button("Ask for Permission"), nullptr);
    EXPECT_EQ(permission->asked, 0);
    button("Ask for Permission")->click();
    EXPECT_EQ(permission->asked, 1);

    permission->become(Permission::State::asked, QStringLiteral("Look for its window."));
    settle();
    EXPECT_TRUE(shows("Look for its window."));
    EXPECT_EQ(button("Ask for Permission"), nullptr);

    permission->become(Permission::State::granted, QStringLiteral("It may."));
    settle();
    EXPECT_TRUE(shows("It may."));
    EXPECT_FALSE(shows("A window will ask you."));
    EXPECT_EQ(button("Ask for Permission"), nullptr);

    permission->become(Permission::State::missing, QStringLiteral("Taken back."));
    settle();
    EXPECT_NE(button("Ask for Permission"), nullptr);
}

TEST_F(SettingsFormTest, ProviderIsBoundBothWays) {
    show();
    QStringList names;
    for (int i = 0; i < provider()->count(); ++i)
        names.append(provider()->itemText(i));
    EXPECT_EQ(names.join(u'|').toStdString(), "OpenAI|Claude|Gemini");
    EXPECT_EQ(provider()->currentText().toStdString(), "OpenAI");
    QTest::keyClick(provider(), Qt::Key_Down);
    EXPECT_EQ(store().selectedProvider(), AIProvider::anthropic);
    EXPECT_EQ(defaults.string(QStringLiteral("settings.selectedProvider")),
              QStringLiteral("anthropic"));
    store().setSelectedProvider(AIProvider::gemini);
    settle();
    EXPECT_EQ(provider()->currentText().toStdString(), "Gemini");
    for (const char *name : {"OpenAI Model", "Claude Model", "Gemini Model"})
        EXPECT_TRUE(field(name)->isVisibleTo(window())) << name;
}

TEST_F(SettingsFormTest, TheWheelNeverChangesTheProvider) {
    show();
    QWheelEvent wheel(QPointF(5, 5), provider()->mapToGlobal(QPointF(5, 5)), QPoint(),
                      QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(provider(), &wheel);
    EXPECT_FALSE(wheel.isAccepted());
    EXPECT_EQ(store().selectedProvider(), AIProvider::openAI);
}

TEST_F(SettingsFormTest, FieldsWriteThroughAtEachKey) {
    show();
    const QString key = QStringLiteral("settings.anthropic.endpoint");
    TextField *endpoint = field("Anthropic Endpoint");
    replaceText(endpoint, QStringLiteral("h"));
    EXPECT_EQ(defaults.string(key), QStringLiteral("h"));
    QTest::keyClicks(endpoint, QStringLiteral("i "));
    EXPECT_EQ(defaults.string(key), QStringLiteral("hi ")) << "exactly as typed";
    replaceText(endpoint, QString());
    EXPECT_EQ(defaults.string(key), QString());
    EXPECT_EQ(endpoint->text(), QString());
    replaceText(field("Gemini API Key"), QStringLiteral("k1"));
    EXPECT_EQ(
        secrets.items.value({QStringLiteral("com.quillmender.gemini"), QStringLiteral("api-key")}),
        "k1");
}

TEST_F(SettingsFormTest, EachFieldHasItsOwnSetting) {
    show();
    int number = 0;
    for (TextField *each : window()->findChildren<TextField *>())
        replaceText(each, QString::number(++number));
    number = 0;
    for (const AIProvider provider : allProviders) {
        EXPECT_EQ(store().apiKey(provider), QString::number(++number));
        EXPECT_EQ(store().model(provider), QString::number(++number));
        EXPECT_EQ(store().endpoint(provider), QString::number(++number));
    }
}

TEST_F(SettingsFormTest, TypingInTheMiddleKeepsTheCursorAndUndo) {
    show();
    TextField *model = field("OpenAI Model");
    model->setCursorPosition(3);
    QTest::keyClick(model, Qt::Key_X);
    settle();
    EXPECT_EQ(store().model(AIProvider::openAI).toStdString(), "gptx-5-mini");
    EXPECT_EQ(model->cursorPosition(), 4);
    QTest::keyClick(model, Qt::Key_Y);
    settle();
    EXPECT_EQ(store().model(AIProvider::openAI).toStdString(), "gptxy-5-mini");
    QTest::keySequence(model, QKeySequence::Undo);
    EXPECT_EQ(store().model(AIProvider::openAI).toStdString(), "gpt-5-mini");
}

TEST_F(SettingsFormTest, ChangesOfTheStoreAreShownOncePerTurn) {
    show();
    const QSignalSpy rendered(controller().view(), &SettingsView::rendered);
    for (int i = 0; i < 50; ++i)
        store().setModel(AIProvider::gemini, QString::number(i));
    EXPECT_EQ(rendered.count(), 0);
    settle();
    EXPECT_EQ(rendered.count(), 1);
    EXPECT_EQ(field("Gemini Model")->text().toStdString(), "49");
}

TEST_F(SettingsFormTest, LaunchAtLogin) {
    show();
    EXPECT_FALSE(launchAtLogin()->isChecked());
    QTest::mouseClick(launchAtLogin(), Qt::LeftButton);
    settle();
    EXPECT_EQ(loginItem.current, LoginItemStatus::enabled);
    EXPECT_TRUE(shows("Quillmender will open automatically when you log in."));
    loginItem.error = QStringLiteral("The folder is read-only.");
    QTest::mouseClick(launchAtLogin(), Qt::LeftButton);
    settle();
    EXPECT_TRUE(launchAtLogin()->isChecked()) << "it springs back";
    EXPECT_TRUE(shows("The folder is read-only."));
    loginItem.error.reset();
    loginItem.current = LoginItemStatus::notRegistered;
    store().refreshLaunchAtLoginState();
    settle();
    EXPECT_FALSE(launchAtLogin()->isChecked());
    EXPECT_FALSE(shows(""));
}

TEST_F(SettingsFormTest, ApprovalKeepsTheSwitchOnUntilTheNextShow) {
    loginItem.afterRegistration = LoginItemStatus::requiresApproval;
    show();
    QTest::mouseClick(launchAtLogin(), Qt::LeftButton);
    settle();
    const char message[] = "macOS needs approval in Login Items before Quillmender can start "
                           "automatically.";
    EXPECT_TRUE(launchAtLogin()->isChecked());
    EXPECT_TRUE(shows(message));
    window()->close();
    show();
    EXPECT_FALSE(launchAtLogin()->isChecked());
    EXPECT_TRUE(shows(message));
}

TEST_F(SettingsFormTest, PermissionChangesOnlyOnRefresh) {
    access.granted = false;
    permissions.refresh();
    show();
    EXPECT_TRUE(shows("Accessibility access not granted"));
    access.granted = true;
    store().setModel(AIProvider::openAI, QStringLiteral("x"));
    settle();
    EXPECT_TRUE(shows("Accessibility access not granted"));
    const QImage red = label("Accessibility access not granted")->grab().toImage();
    button("Refresh")->click();
    settle();
    ASSERT_TRUE(shows("Accessibility access granted"));
    const auto countOf = [](const QImage &image, const QColor &color) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y) == color ? 1 : 0;
        return count;
    };
    const QImage green = label("Accessibility access granted")->grab().toImage();
    EXPECT_GT(countOf(red, theme.colors().error), 0);
    EXPECT_EQ(countOf(red, theme.colors().success), 0);
    EXPECT_GT(countOf(green, theme.colors().success), 0);
    EXPECT_EQ(countOf(green, theme.colors().error), 0);
}

TEST_F(SettingsFormTest, ButtonsAskTheSystem) {
    access.granted = false;
    access.grantsOnRequest = true;
    show();
    log->clear();
    button("Open Login Items Settings")->click();
    button("Request Access")->click();
    button("Open Privacy Settings")->click();
    settle();
    EXPECT_EQ(log->join(u'\n').toStdString(),
              "openLoginItemSettings\naccess.request\naccess.isGranted\n"
              "openSettingsPage accessibility");
    EXPECT_TRUE(shows("Accessibility access granted"));
    EXPECT_TRUE(button("Request Access")) << "always shown";
    EXPECT_TRUE(button("Open Privacy Settings"));
}

} // namespace quillmender
