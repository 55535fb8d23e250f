#pragma once

#include "platform/linux/x11/selection/SelectionContents.h"

#include <QString>

#include <optional>

namespace quillmender::x11 {

/// The target that marks what programs with a history of the clipboard are not to keep.
inline constexpr auto clipboardManagerMark = "x-kde-passwordManagerHint";

/// The targets of plain text, best first.
QList<xcb_atom_t> textTargets(X11Connection &connection);

/// Absent when the property is not a text in an encoding that we know.
std::optional<QString> decodeText(X11Connection &connection, const X11Property &property);

/// The best plain text among the contents.
std::optional<QString> findText(X11Connection &connection, const SelectionContents &contents);

/// The text in each of its usual targets, with the mark that keeps it out of clipboard histories.
SelectionContents makeTemporaryText(X11Connection &connection, const QString &text);

} // namespace quillmender::x11
