#pragma once

#include "platform/AccessibilityAccess.h"
#include "platform/Chords.h"
#include "platform/Clock.h"
#include "platform/FocusedText.h"
#include "platform/HotKeys.h"
#include "platform/Instance.h"
#include "platform/LoginItem.h"
#include "platform/Pasteboard.h"
#include "platform/Presence.h"
#include "platform/Secrets.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

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
    std::unique_ptr<Presence> presence;

    /// The version of the installed program, if the system knows it.
    std::optional<QString> bundleVersion;
};

/// Makes this system's services, trying each backend in turn, and writes to the log in one line
/// which ones were found. A service that the session lacks is its `none` form.
std::unique_ptr<Platform> makePlatform();

} // namespace quillmender
