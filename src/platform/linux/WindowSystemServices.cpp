#include "platform/linux/WindowSystemServices.h"

#include "platform/linux/NoFrontmostSource.h"
#include "platform/linux/WaylandModule.h"
#include "platform/linux/x11/X11WindowSystem.h"
#include "platform/linux/x11/selection/BridgeWait.h"
#include "platform/linux/x11/selection/BridgedPasteboard.h"
#include "platform/none/NoneChords.h"
#include "platform/none/NoneHotKeys.h"
#include "platform/none/NoneOwnWindows.h"
#include "platform/none/NonePasteboard.h"
#include "platform/none/NoneWorkspace.h"

#include <QLoggingCategory>

namespace quillmender {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.platform", QtWarningMsg)

struct Words {
    Capability capability;
    const char *name;
    const char *without; ///< what the user does without
};

constexpr std::array vocabulary{
    Words{Capability::sourceApplications, "source applications",
          "Quillmender cannot tell which application you are working in."},
    Words{
        Capability::clipboard, "clipboard",
        "Quillmender cannot take text from the clipboard of other applications, nor put it there."},
    Words{Capability::chords, "chords", "Quillmender cannot copy or paste for you."},
    Words{Capability::hotKeys, "hot keys",
          "The keyboard shortcut does not work here. Use the menu of the status item instead."},
    Words{Capability::panel, "panel", "The panel may open behind other windows."},
};

template <typename None, typename Service> void complete(std::unique_ptr<Service> &service) {
    if (!service)
        service = std::make_unique<None>();
}

void completeWithNone(WindowSystemServices &services) {
    complete<NoneWorkspace>(services.workspace);
    complete<NonePasteboard>(services.pasteboard);
    complete<NoneChords>(services.chords);
    complete<NoneHotKeys>(services.hotKeys);
    complete<NoneOwnWindows>(services.ownWindows);
    complete<NoFrontmostSource>(services.frontmost);
    for (const Words &words : vocabulary)
        if (!services.backends.contains(words.capability) &&
            !services.missing.contains(words.capability))
            services.missing[words.capability] = QString(QLatin1String(words.without));
}

// The X server beside a compositor knows older programs only, and what is in front only among them.
void tellOfProgramsOutOfSight(WindowSystemServices &services) {
    if (services.backends.remove(Capability::sourceApplications) == 0)
        return;
    services.missing[Capability::sourceApplications] = QStringLiteral(
        "Quillmender runs as a program for X11 in this Wayland session, and works only in programs "
        "that do so, too. Install the package qt6-wayland, set no QT_QPA_PLATFORM=xcb, and start "
        "Quillmender again.");
    qCWarning(log, "a program for X11 in a Wayland session: it works only in programs of its kind");
}

void writeToLog(const WindowSystemServices &services, const QString &toolkitPlatform) {
    qCInfo(log, "window system: %s, since the toolkit speaks %s",
           services.name.isEmpty() ? "none" : qUtf8Printable(services.name),
           qUtf8Printable(toolkitPlatform));
    for (const Words &words : vocabulary) {
        const auto backend = services.backends.constFind(words.capability);
        if (backend != services.backends.constEnd())
            qCInfo(log, "%s: %s", words.name, qUtf8Printable(*backend));
        else
            qCInfo(log, "%s: none. %s", words.name,
                   qUtf8Printable(services.missing[words.capability].sentence));
    }
}

} // namespace

WindowSystemServices chooseWindowSystem(const QString &toolkitPlatform, WindowSystemNeeds needs) {
    WindowSystemServices services;
    if (toolkitPlatform == QStringLiteral("xcb")) {
        services = x11::makeWindowSystem(std::move(needs.windowIcon));
        if (!qgetenv("WAYLAND_DISPLAY").isEmpty())
            tellOfProgramsOutOfSight(services);
    } else if (toolkitPlatform.startsWith(QStringLiteral("wayland"))) {
        needs.openBridgedClipboard = x11::openBridgedClipboard;
        needs.waitForBridge = x11::waitForBridge;
        services = WaylandModule().makeWindowSystem(needs);
    }
    completeWithNone(services);
    writeToLog(services, toolkitPlatform);
    return services;
}

} // namespace quillmender
