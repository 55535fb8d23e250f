#include "platform/linux/wayland/WaylandWindowSystem.h"

#include "platform/ApplicationId.h"
#include "platform/linux/portal/PortalHotKeys.h"
#include "platform/linux/portal/RemoteDesktopKeys.h"
#include "platform/linux/portal/RemoteDesktopPermission.h"
#include "platform/linux/wayland/ToolkitLoss.h"
#include "platform/linux/wayland/WaylandServices.h"
#include "platform/linux/wayland/clipboard/WaylandPasteboard.h"
#include "platform/linux/wayland/keys/CompositorLines.h"
#include "platform/linux/wayland/keys/VirtualKeyboard.h"
#include "platform/linux/wayland/keys/WaylandChords.h"
#include "platform/linux/wayland/kwin/FakeInput.h"
#include "platform/linux/wayland/kwin/KdeHotKeys.h"
#include "platform/linux/wayland/kwin/KeystateModifiers.h"
#include "platform/linux/wayland/kwin/PlasmaToplevels.h"
#include "platform/linux/wayland/own/FocusedModifiers.h"
#include "platform/linux/wayland/own/ToolkitDisplay.h"
#include "platform/linux/wayland/own/WaylandOwnWindows.h"
#include "platform/linux/wayland/sway/SwayHotKeys.h"
#include "platform/linux/wayland/sway/SwayToplevels.h"
#include "platform/linux/wayland/windows/AccessibleToplevels.h"
#include "platform/linux/wayland/windows/WaylandFrontmostSource.h"
#include "platform/linux/wayland/windows/WaylandWorkspace.h"

namespace quillmender::wayland {

namespace {

constexpr std::chrono::milliseconds primaryLimit{500};
// What the lines for a configuration bind.
constexpr QKeyCombination usualHotKey(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space);

void makeSources(WindowSystemServices &services, WaylandServices &shared,
                 const WindowSystemNeeds &needs) {
    shared.foreignToplevels =
        wlroots::ForeignToplevels::create(*shared.connection, QString::fromLatin1(applicationId));
    QString backend;
    if (shared.sway) {
        sway::SwayToplevels::KeyboardIsWithWindows withWindows;
        if (const auto *foreign = shared.foreignToplevels.get())
            withWindows = [foreign] { return foreign->isAnyActive(); };
        shared.toplevels =
            std::make_unique<sway::SwayToplevels>(*shared.sway, std::move(withWindows));
        backend = QStringLiteral("the compositor's socket");
    } else if (auto plasma = kwin::PlasmaToplevels::create(*shared.connection)) {
        shared.toplevels = std::move(plasma);
        backend = QStringLiteral("plasma-window-management");
    } else if (shared.foreignToplevels) {
        shared.toplevels = std::move(shared.foreignToplevels);
        backend = QStringLiteral("wlr-foreign-toplevel-management and the accessibility bus");
    } else if (needs.frontWindows) {
        shared.toplevels = std::make_unique<AccessibleToplevels>(needs.frontWindows());
        backend = QStringLiteral("the accessibility bus");
    } else {
        return;
    }
    services.backends[Capability::sourceApplications] = backend;
    shared.applications = std::make_unique<SourceApplications>(
        *shared.toplevels, [findProcess = needs.findProcess](Toplevel active) {
            return findProcess(active.title, active.appId);
        });
    services.workspace = std::make_unique<WaylandWorkspace>(*shared.applications);
}

Lack lackOfClipboard() {
    Lack lack(QStringLiteral("Quillmender cannot take text from the clipboard of other "
                             "applications, nor put it there."));
    lack.remedy = QStringLiteral("This desktop shows the clipboard to no program that runs in the "
                                 "background, except through its X server. Install the package "
                                 "xwayland and log in again.");
    return lack;
}

// The server beside the compositor knows what is copied in either world.
void makeBridgedClipboard(WindowSystemServices &services, WaylandServices &shared,
                          const WindowSystemNeeds &needs) {
    BridgedClipboard bridged =
        needs.openBridgedClipboard ? needs.openBridgedClipboard() : BridgedClipboard();
    if (!bridged.pasteboard) {
        services.missing[Capability::clipboard] = lackOfClipboard();
        return;
    }
    services.pasteboard = std::move(bridged.pasteboard);
    services.backends[Capability::clipboard] = QStringLiteral("the X server of the session");
    shared.readPrimary = std::move(bridged.readPrimary);
}

void makeClipboard(WindowSystemServices &services, WaylandServices &shared,
                   const WindowSystemNeeds &needs) {
    shared.dataControl = DataControl::create(*shared.connection);
    if (!shared.dataControl) {
        makeBridgedClipboard(services, shared, needs);
        return;
    }
    services.pasteboard = std::make_unique<WaylandPasteboard>(*shared.dataControl,
                                                              shared.chordMoment, shared.copyWatch);
    services.backends[Capability::clipboard] = QStringLiteral("data-control");
    if (!shared.dataControl->hasPrimary())
        return;
    shared.primary = std::make_unique<PrimarySelection>(*shared.dataControl);
    shared.readPrimary = [primary = shared.primary.get()] {
        return primary->primaryText(primaryLimit);
    };
}

portal::Portal &portalOf(WaylandServices &shared) {
    if (!shared.portal)
        shared.portal = std::make_unique<portal::Portal>();
    return *shared.portal;
}

// The portal is not waited for. Until the user has agreed the keys answer that they are not to be
// had.
Lack makePortalTyping(WaylandServices &shared, portal::RemoteDesktopKeys::FindCodes findCodes) {
    portal::Portal &portal = portalOf(shared);
    auto keys = std::make_unique<portal::RemoteDesktopKeys>(
        portal, shared.portalTokens, shared.modifiers.get(), std::move(findCodes));
    const auto permission = std::make_shared<portal::RemoteDesktopPermission>(portal, *keys);
    Lack lack(permission->sentence());
    lack.remedy =
        QStringLiteral("Your desktop can let Quillmender type on the keyboard. It asks you "
                       "in a window of its own, and calls that remote control; where the "
                       "window has a switch for remote interaction, turn it on. Quillmender "
                       "types nothing but the keys for copying and pasting.");
    lack.permission = permission;
    shared.typing = std::move(keys);
    return lack;
}

void listenToModifiers(WaylandServices &shared) {
    wl_display *const display = toolkitDisplay();
    if (!display)
        return;
    shared.keyboardWatch = std::make_unique<KeyboardWatch>(display);
    shared.modifiers = std::make_unique<FocusedModifiers>(*shared.keyboardWatch, *shared.toplevels);
}

void makeTyping(WindowSystemServices &services, WaylandServices &shared) {
    const auto name = [&services](const char *backend) {
        services.backends[Capability::chords] = QString::fromLatin1(backend);
    };
    shared.typing = VirtualKeyboard::create(*shared.connection);
    if (shared.typing)
        return name("virtual-keyboard");
    shared.modifiers = kwin::KeystateModifiers::create(*shared.connection);
    shared.seatKeyboard = std::make_unique<kwin::SeatKeyboard>(*shared.connection);
    shared.seatLayout =
        std::make_unique<kwin::SeatLayout>(*shared.seatKeyboard, QDBusConnection::sessionBus());
    const auto findCodes = [layout = shared.seatLayout.get()](TypedKeys keys) {
        return layout->codesOf(keys);
    };
    shared.typing = kwin::FakeInput::create(*shared.connection, shared.modifiers.get(), findCodes);
    if (shared.typing)
        return name("fake-input");
    if (!shared.modifiers)
        listenToModifiers(shared);
    // What the user holds would mix with the keys, so that the permission would be good for
    // nothing.
    if (!shared.modifiers)
        return;
    services.missing[Capability::chords] = makePortalTyping(shared, findCodes);
    name("the portal's remote desktop, when the user agrees");
}

void makeFrontmost(WindowSystemServices &services, WaylandServices &shared,
                   const WindowSystemNeeds &needs) {
    auto frontmost =
        std::make_unique<WaylandFrontmostSource>(*shared.applications, shared.readPrimary);
    makeTyping(services, shared);
    if (shared.typing)
        services.chords = std::make_unique<WaylandChords>(
            WaylandChordSurroundings{*shared.toplevels, *frontmost, *shared.typing,
                                     shared.chordMoment, shared.copyWatch, needs.waitForBridge});
    services.frontmost = std::move(frontmost);
}

Lack lackOfHotKeys() {
    // Only its name tells what its configuration looks like; nothing else depends on it.
    const CompositorLines wanted = qEnvironmentVariableIsSet("LABWC_PID")
                                       ? linesForLabwc(usualHotKey)
                                       : linesForAny(usualHotKey);
    Lack lack(
        QStringLiteral("This desktop has given Quillmender no shortcut that works everywhere."));
    lack.lines = wanted.lines.trimmed();
    if (wanted.file.isEmpty()) {
        lack.remedy = QStringLiteral("Bind a key of your choice to this command in the settings of "
                                     "your desktop:");
    } else {
        lack.remedy = QStringLiteral("Put these lines into `%1`, %2, and run `%3`:")
                          .arg(wanted.file, wanted.place, wanted.after);
    }
    return lack;
}

void makeHotKeys(WindowSystemServices &services, WaylandServices &shared) {
    if (shared.sway) {
        services.hotKeys = std::make_unique<sway::SwayHotKeys>(*shared.sway);
        services.backends[Capability::hotKeys] = QStringLiteral("bindings of the compositor");
    } else if (auto global = kwin::KdeHotKeys::create(QDBusConnection::sessionBus())) {
        services.hotKeys = std::move(global);
        services.backends[Capability::hotKeys] = QStringLiteral("the desktop's global shortcuts");
    } else {
        // Whether it has any shows when it is asked for them, which starting does not wait for.
        services.hotKeys = std::make_unique<portal::PortalHotKeys>(portalOf(shared));
        services.backends[Capability::hotKeys] =
            QStringLiteral("global shortcuts of the portal, if it has them");
        services.missing[Capability::hotKeys] = lackOfHotKeys();
    }
}

void makeOwnWindows(WindowSystemServices &services, WaylandServices &shared) {
    CompositorHelp help;
    help.toplevels = shared.toplevels.get();
    if (auto *sway = shared.sway.get())
        help.swayCommand = [sway](const QString &command) {
            sway->post(sway::Request::runCommand, command.toUtf8());
        };
    auto windows = std::make_unique<WaylandOwnWindows>(*shared.connection, std::move(help));
    services.backends[Capability::panel] = windows->panelBackend();
    services.ownWindows = std::move(windows);
}

} // namespace

WindowSystemServices makeWindowSystem(const WindowSystemNeeds &needs) {
    WindowSystemServices services;
    services.name = QStringLiteral("Wayland");
    endWhenToolkitLosesCompositor();
    const auto shared = std::make_shared<WaylandServices>();
    shared->connection = WaylandConnection::open();
    if (!shared->connection)
        return services;
    services.shared = shared;
    shared->sway = sway::SwayIpc::open();
    makeSources(services, *shared, needs);
    makeClipboard(services, *shared, needs);
    if (shared->applications)
        makeFrontmost(services, *shared, needs);
    makeHotKeys(services, *shared);
    makeOwnWindows(services, *shared);
    return services;
}

} // namespace quillmender::wayland
