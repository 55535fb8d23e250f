#pragma once

#include <QDBusArgument>
#include <QKeyCombination>
#include <QList>
#include <QMetaType>

#include <optional>

namespace quillmender::kwin {

/// Up to four key combinations that are pressed one after another, as the toolkit numbers them.
struct ShortcutSequence {
    QList<int> keys;

    friend bool operator==(const ShortcutSequence &, const ShortcutSequence &) = default;
};

/// Alternatives; on the bus `a(ai)`.
using ShortcutKeys = QList<ShortcutSequence>;

QDBusArgument &operator<<(QDBusArgument &argument, const ShortcutSequence &sequence);
const QDBusArgument &operator>>(const QDBusArgument &argument, ShortcutSequence &sequence);

/// To be called before the types are sent.
void registerShortcutKeys();

ShortcutKeys shortcutKeys(QKeyCombination keys);

/// The keys of an argument; absent when it is of another type.
std::optional<ShortcutKeys> shortcutKeys(const QVariant &argument);

/// The first alternative that is a single combination.
std::optional<QKeyCombination> combinationOf(const ShortcutKeys &keys);

} // namespace quillmender::kwin

Q_DECLARE_METATYPE(quillmender::kwin::ShortcutSequence)
