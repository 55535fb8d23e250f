#pragma once

namespace quillmender::x11 {

/// Whom the selections of an X server reach.
enum class SelectionReach {
    server, ///< its own clients, who are told from one another by their windows

    /// A compositor's clients, too. It asks for them, so that nobody knows who reads; and it offers
    /// them whatever is in the list of targets as a format of the contents. It reads by itself a
    /// text that is new on CLIPBOARD, once and at once, to have it when its owner has gone.
    session,
};

} // namespace quillmender::x11
