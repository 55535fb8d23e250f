#include "WindowScenes.h"

#include "model/ActionListItem.h"
#include "ui/HostedWindow.h"
#include "ui/PopUpButton.h"
#include "ui/PushButton.h"
#include "ui/ScrollRegion.h"
#include "ui/SettingsView.h"
#include "ui/TextField.h"

#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QScrollBar>
#include <QTimer>
#include <QToolTip>

namespace quillmender {

namespace {
constexpr int settleMilliseconds = 120;
constexpr int manyActions = 40;

Lack lackOfHotKeys() {
    Lack lack(QStringLiteral("The keyboard shortcut does not work here. Use the menu of the status "
                             "item instead."));
    lack.remedy =
        QStringLiteral("Put these lines into the configuration of your desktop, "
                       "`~/.config/labwc/rc.xml`, between `<keyboard>` and `</keyboard>`:");
    lack.lines = QStringLiteral(
        "<keybind key=\"C-A-space\">\n"
        "  <action name=\"Execute\"\n"
        "    command=\"gapplication action com.quillmender.Quillmender transform\"/>\n"
        "</keybind>");
    return lack;
}

/// One that the desktop can be told to ask for.
class OpenPermission : public Permission {
  public:
    State state() const override { return State::missing; }
    QString sentence() const override {
        return QStringLiteral("Quillmender cannot copy or paste for you.");
    }
    void ask() override {}
};

Lack lackOfChords() {
    Lack lack(QStringLiteral("Quillmender cannot copy or paste for you."));
    lack.remedy =
        QStringLiteral("Your desktop can let Quillmender type on the keyboard. It asks you "
                       "in a window of its own, and calls that remote control. "
                       "Quillmender types nothing but the keys for copying and pasting.");
    lack.permission = std::make_shared<OpenPermission>();
    return lack;
}

} // namespace

WindowScenes::WindowScenes(Theme &theme, OwnWindows &ownWindows, QString folder)
    : folder_(std::move(folder)),
      settings_(store_, permissions_, theme, ownWindows),
      poorSettings_(
          poorStore_, permissions_, theme, ownWindows,
          {{Capability::panel, QStringLiteral("The panel may open behind other windows.")},
           {Capability::chords, lackOfChords()},
           {Capability::hotKeys, lackOfHotKeys()}}),
      about_(QStringLiteral("1.0.0"), theme, ownWindows),
      alert_({QStringLiteral("Quillmender 1.4.2 is available"),
              QStringLiteral("A newer version of Quillmender has been published. Do you want to "
                             "download it now?"),
              {QStringLiteral("Download"), QStringLiteral("Later")}},
             {}, theme, ownWindows) {
    const auto settingsAt = [this](int percent) {
        return [this, percent]() -> QWidget * {
            scroll(settings_, percent);
            return settings_.window();
        };
    };
    waiting_ = {
        {QStringLiteral("settings"), settingsAt(0)},
        {QStringLiteral("settings-middle"), settingsAt(45)},
        {QStringLiteral("settings-end"), settingsAt(100)},
        {QStringLiteral("tool-tip"), [this] { return showToolTip(); }},
        {QStringLiteral("provider-list"),
         [this]() -> QWidget * {
             QToolTip::hideText();
             scroll(settings_, 0);
             auto *provider = settings_.window()->findChild<PopUpButton *>();
             provider->showPopup();
             return provider->findChild<QFrame *>();
         }},
        {QStringLiteral("context-menu"),
         [this]() -> QWidget * {
             settings_.window()->findChild<PopUpButton *>()->hidePopup();
             return openContextMenu();
         }},
        {QStringLiteral("editor-starter"),
         [this] {
             settings_.window()->findChild<QMenu *>()->close();
             return openEditor([this] {
                 settings_.view()->edit(ActionListItem::builtIn(starterActions().first()));
             });
         }},
        {QStringLiteral("editor-new"),
         [this] {
             return openEditor([this] {
                 for (auto *button : settings_.window()->findChildren<PushButton *>())
                     if (button->caption() == QLatin1String("New Action"))
                         button->click();
             });
         }},
        {QStringLiteral("actions-many"),
         [this]() -> QWidget * {
             settings_.window()->findChild<QDialog *>()->reject();
             store_.hideBuiltInAction(TextAction::casual);
             permissions_.setAccessibilityGranted(true);
             for (int i = 1; i <= manyActions; ++i)
                 store_.addCustomAction(
                     i % 3 ? QStringLiteral("Custom %1").arg(i)
                           : QStringLiteral("Rewrite as a release note for version %1 with "
                                            "highlights, fixes and known issues & thanks")
                                 .arg(i),
                     QStringLiteral("{{text}}"));
             return settings_.window();
         }},
        {QStringLiteral("actions-many-middle"), settingsAt(50)},
        {QStringLiteral("actions-many-end"), settingsAt(100)},
        {QStringLiteral("settings-of-a-poor-session"),
         [this]() -> QWidget * {
             poorStore_.setHeldHotKey(std::nullopt);
             poorSettings_.makeKeyAndOrderFront();
             scroll(poorSettings_, 90);
             return poorSettings_.window();
         }},
        {QStringLiteral("about"),
         [this]() -> QWidget * {
             about_.makeKeyAndOrderFront();
             return about_.window();
         }},
        {QStringLiteral("alert"),
         [this]() -> QWidget * {
             alert_.makeKeyAndOrderFront();
             return &alert_;
         }},
    };
}

void WindowScenes::start() {
    settings_.makeKeyAndOrderFront();
    QTimer::singleShot(settleMilliseconds, this, &WindowScenes::next);
}

void WindowScenes::next() {
    if (waiting_.isEmpty()) {
        Q_EMIT finished();
        return;
    }
    const Scene scene = waiting_.takeFirst();
    QWidget *window = scene.enter();
    QTimer::singleShot(settleMilliseconds, this, [this, scene, window] {
        window->grab().save(QStringLiteral("%1/%2.png").arg(folder_, scene.name));
        next();
    });
}

void WindowScenes::scroll(SettingsWindowController &settings, int percent) {
    QScrollBar *bar = settings.window()->findChild<ScrollRegion *>()->verticalScrollBar();
    bar->setValue(bar->maximum() * percent / 100);
}

QWidget *WindowScenes::openContextMenu() {
    for (auto *field : settings_.window()->findChildren<TextField *>()) {
        if (field->echoMode() != QLineEdit::Normal)
            continue;
        field->selectAll();
        QMenu *menu = field->createStandardContextMenu();
        menu->setParent(settings_.window(), menu->windowFlags());
        menu->popup(settings_.window()->geometry().center());
        menu->setActiveAction(menu->actions().last());
        return menu;
    }
    return nullptr;
}

QWidget *WindowScenes::showToolTip() {
    QToolTip::showText(settings_.window()->geometry().center(),
                       QStringLiteral("<p>Rewrite as a release note for version 12 with "
                                      "highlights, fixes and known issues &amp; thanks</p>"),
                       settings_.window());
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (widget->inherits("QTipLabel"))
            return widget;
    return nullptr;
}

QWidget *WindowScenes::openEditor(const std::function<void()> &open) {
    if (auto *sheet = settings_.window()->findChild<QDialog *>())
        sheet->reject();
    open();
    return settings_.window()->findChildren<QDialog *>().last();
}

} // namespace quillmender
