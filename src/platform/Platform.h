#pragma once

#include "platform/AccessibilityAccess.h"
#include "platform/Appearance.h"
#include "platform/Capabilities.h"
#include "platform/Chords.h"
#include "platform/Clock.h"
#include "platform/FocusedText.h"
#include "platform/HotKeys.h"
#include "platform/Instance.h"
#include "platform/LoginItem.h"
#include "platform/OwnWindows.h"
#include "platform/Pasteboard.h"
#include "platform/Secrets.h"
#include "platform/StatusItem.h"
#include "platform/Symbols.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

#include <functional>
#include <memory>

namespace quillmender {

/// Every operating-system service that the program uses, made once at start-up and handed down.
/// No member is ever null. A service that refers to another is declared after it.
struct Platform {
    /// Keeps alive what several services share, such as a display connection.
    std::shared_ptr<void> shared;
    std::unique_ptr<Clock> clock;
    std::unique_ptr<Instance> instance;
    std::unique_ptr<UserDefaults> userDefaults;
    std::unique_ptr<Secrets> secrets;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<AccessibilityAccess> accessibilityAccess;
    std::unique_ptr<FocusedText> focusedText;
    std::unique_ptr<Pasteboard> pasteboard;
    std::unique_ptr<Chords> chords;
    std::unique_ptr<HotKeys> hotKeys;
    std::unique_ptr<OwnWindows> ownWindows;
    std::unique_ptr<Symbols> symbols;
    std::unique_ptr<Appearance> appearance;
    std::unique_ptr<StatusItem> statusItem;

    /// Makes ready, some milliseconds at a time, what the first session would wait for. False when
    /// nothing is left. Never empty.
    std::function<bool()> prepareMore = [] { return false; };

    /// Gives memory back that is not used any more. Never empty.
    std::function<void()> giveMemoryBack = [] {};

    /// What this session lacks; the services above are then their `none` forms, or such as find out
    /// when they are used. The keys of the shortcut are missing only while none are held.
    MissingCapabilities missing;

    /// The version of the installed program, if the system knows it.
    std::optional<QString> bundleVersion;
};

/// Makes this system's services and writes a line to the log for each capability: which backend was
/// chosen, or why there is none. The application object of the toolkit must be there.
std::unique_ptr<Platform> makePlatform();

} // namespace quillmender
