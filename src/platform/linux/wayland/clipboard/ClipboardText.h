#pragma once

#include "platform/linux/wayland/clipboard/OfferedContents.h"

#include <QString>

#include <optional>

namespace quillmender::wayland {

/// The type that marks what programs with a history of the clipboard are not to keep.
inline constexpr auto clipboardManagerMark = "x-kde-passwordManagerHint";

/// Those of the types that are plain text, best first.
QList<QByteArray> textTypes(const QList<QByteArray> &types);

QString decodeText(const QByteArray &type, const QByteArray &bytes);

/// The best plain text among the contents.
std::optional<QString> findText(const OfferedContents &contents);

/// The text in each of its usual types, with the mark that keeps it out of clipboard histories.
OfferedContents makeTemporaryText(const QString &text);

} // namespace quillmender::wayland
