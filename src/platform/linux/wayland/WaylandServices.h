#pragma once

#include "platform/linux/portal/FileTokenStore.h"
#include "platform/linux/portal/Portal.h"
#include "platform/linux/wayland/ChordMoment.h"
#include "platform/linux/wayland/KeyTyping.h"
#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/clipboard/PrimarySelection.h"
#include "platform/linux/wayland/keys/CopyWatch.h"
#include "platform/linux/wayland/kwin/HeldModifiers.h"
#include "platform/linux/wayland/kwin/SeatKeyboard.h"
#include "platform/linux/wayland/kwin/SeatLayout.h"
#include "platform/linux/wayland/own/KeyboardWatch.h"
#include "platform/linux/wayland/sway/SwayIpc.h"
#include "platform/linux/wayland/windows/SourceApplications.h"
#include "platform/linux/wayland/wlroots/ForeignToplevels.h"

#include <memory>

namespace quillmender::wayland {

/// What the services of a Wayland session share. A member that the compositor does not have is
/// null; one that refers to another is declared after it.
struct WaylandServices {
    std::unique_ptr<WaylandConnection> connection;
    std::unique_ptr<sway::SwayIpc> sway;
    std::unique_ptr<wlroots::ForeignToplevels> foreignToplevels;
    std::unique_ptr<Toplevels> toplevels;
    std::unique_ptr<SourceApplications> applications;
    std::unique_ptr<DataControl> dataControl;
    std::unique_ptr<PrimarySelection> primary;
    std::function<QCoro::Task<std::optional<QString>>()> readPrimary;
    ChordMoment chordMoment;
    CopyWatch copyWatch;
    std::unique_ptr<KeyboardWatch> keyboardWatch; ///< where it tells of the modifiers
    std::unique_ptr<kwin::HeldModifiers> modifiers;
    std::unique_ptr<kwin::SeatKeyboard> seatKeyboard;
    std::unique_ptr<kwin::SeatLayout> seatLayout;
    std::unique_ptr<portal::Portal> portal; ///< where something is asked of it
    portal::FileTokenStore portalTokens;
    std::unique_ptr<KeyTyping> typing;
};

} // namespace quillmender::wayland
