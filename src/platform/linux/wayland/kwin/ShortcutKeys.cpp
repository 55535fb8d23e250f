#include "platform/linux/wayland/kwin/ShortcutKeys.h"

#include <QDBusMetaType>

namespace quillmender::kwin {

namespace {
constexpr qsizetype longestSequence = 4;
} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const ShortcutSequence &sequence) {
    // The other side reads four and dies of fewer.
    QList<int> filledUp = sequence.keys;
    filledUp.resize(longestSequence);
    argument.beginStructure();
    argument << filledUp;
    argument.endStructure();
    return argument;
}

// NOLINTBEGIN(bugprone-return-const-ref-from-parameter): the signature that the bus library wants
const QDBusArgument &operator>>(const QDBusArgument &argument, ShortcutSequence &sequence) {
    argument.beginStructure();
    argument >> sequence.keys;
    argument.endStructure();
    // Those of others are filled up with nothing.
    sequence.keys.removeAll(0);
    return argument;
}
// NOLINTEND(bugprone-return-const-ref-from-parameter)

void registerShortcutKeys() {
    qDBusRegisterMetaType<ShortcutSequence>();
    qDBusRegisterMetaType<ShortcutKeys>();
}

ShortcutKeys shortcutKeys(QKeyCombination keys) {
    ShortcutSequence sequence{{keys.toCombined()}};
    return {sequence};
}

std::optional<ShortcutKeys> shortcutKeys(const QVariant &argument) {
    if (!argument.canConvert<QDBusArgument>())
        return std::nullopt;
    const auto value = argument.value<QDBusArgument>();
    if (value.currentSignature() != QStringLiteral("a(ai)"))
        return std::nullopt;
    auto keys = qdbus_cast<ShortcutKeys>(value);
    keys.removeIf([](const ShortcutSequence &sequence) {
        return sequence.keys.isEmpty() || sequence.keys.size() > longestSequence;
    });
    return keys;
}

std::optional<QKeyCombination> combinationOf(const ShortcutKeys &keys) {
    for (const ShortcutSequence &sequence : keys)
        if (sequence.keys.size() == 1)
            return QKeyCombination::fromCombined(sequence.keys.constFirst());
    return std::nullopt;
}

} // namespace quillmender::kwin
