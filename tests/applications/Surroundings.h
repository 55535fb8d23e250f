#pragma once

#include "desktop/harness/AnyDesktop.h"

#include <memory>
#include <optional>

namespace quillmender::applications {

/// What kind of desktop applications are tried on.
enum class Surroundings { x11, sway, kwin };

/// By the name that the command line has for it.
std::optional<Surroundings> surroundingsNamed(const QString &name);

/// For people: "X11, openbox".
QString describe(Surroundings surroundings);

/// What this machine lacks to start such a desktop.
QStringList missingPrograms(Surroundings surroundings);

/// On Wayland there is an X server only where one is needed: elsewhere an application that is seen
/// speaks Wayland.
std::unique_ptr<harness::AnyDesktop> startDesktop(Surroundings surroundings, bool needsX);

} // namespace quillmender::applications
