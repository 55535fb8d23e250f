#include "platform/linux/atspi/Decoding.h"

namespace quillmender::atspi {

namespace {

// The words of a state set that have a meaning, and room for as many again.
constexpr qsizetype maximumWords = 4;
// More than any toolkit has kinds of relations, and than any object has relations of one kind.
constexpr qsizetype maximumRelations = 100;

template <typename Item> QList<Item> items(const QDBusArgument &array, qsizetype maximum) {
    QList<Item> found;
    array.beginArray();
    while (!array.atEnd() && found.size() < maximum) {
        Item item;
        array >> item;
        found.append(item);
    }
    array.endArray();
    return found;
}

} // namespace

std::optional<QDBusArgument> compound(const QVariant &value, const char *signature) {
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String(signature))
        return std::nullopt;
    return argument;
}

QList<ObjectRef> decodeObjects(const QVariant &value, qsizetype maximum) {
    const auto array = compound(value, "a(so)");
    return array ? items<ObjectRef>(*array, maximum) : QList<ObjectRef>();
}

StateSet decodeStates(const QVariant &value) {
    const auto array = compound(value, "au");
    return array ? StateSet(items<uint>(*array, maximumWords)) : StateSet();
}

ObjectRef decodeRelation(const QVariant &value, uint relation) {
    const auto array = compound(value, "a(ua(so))");
    ObjectRef found;
    if (!array)
        return found;
    array->beginArray();
    for (qsizetype seen = 0; !array->atEnd() && seen < maximumRelations; ++seen) {
        uint kind = 0;
        array->beginStructure();
        *array >> kind;
        const QList<ObjectRef> targets = items<ObjectRef>(*array, maximumRelations);
        array->endStructure();
        if (kind == relation && !targets.isEmpty())
            found = targets.first();
    }
    array->endArray();
    return found;
}

} // namespace quillmender::atspi
