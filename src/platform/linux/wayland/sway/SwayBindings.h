#pragma once

#include <QKeyCombination>
#include <QString>
#include <QStringList>

#include <optional>

namespace quillmender::sway {

/// The combination in the compositor's own spelling; empty when it has none for the key.
QString spelled(QKeyCombination keys);

/// The line of the configuration that binds these keys to something, in whatever spelling, mode or
/// circumstances: by the names of the symbols or the codes of the keys, when the key goes down or
/// up, for one device or all. Absent when there is none.
std::optional<QString> bindingOf(QKeyCombination keys, const QStringList &configuration);

} // namespace quillmender::sway
