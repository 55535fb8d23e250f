#pragma once

#include <QKeyCombination>
#include <QString>

namespace quillmender {

/// The keys that start a session; there is no setting to change them.
inline constexpr QKeyCombination askedHotKey =
    QKeyCombination(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space);

/// The keys by their names, as in "Control + Option + Space".
QString hotKeyDisplay(QKeyCombination keys);

} // namespace quillmender
