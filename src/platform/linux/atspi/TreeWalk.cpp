#include "platform/linux/atspi/TreeWalk.h"

#include "platform/linux/atspi/Decoding.h"

#include <vector>

namespace quillmender::atspi {

namespace {

constexpr int maximumVisited = 3000;
constexpr int maximumWave = 64;
constexpr int maximumChildren = 500;
constexpr int matchAll = 1;

struct Examination {
    PendingCall role;
    PendingCall states;
    PendingCall interfaces;
};

} // namespace

bool ElementTraits::hasText() const {
    return interfaces.contains(QLatin1String(protocol::text));
}

QCoro::Task<QList<ElementTraits>> examine(AtspiBus &bus, QList<ObjectRef> objects,
                                          CallBudgetRef budget) {
    std::vector<Examination> calls;
    for (const ObjectRef &object : objects) {
        calls.push_back({bus.call(budget, object, protocol::accessible, "GetRole"),
                         bus.call(budget, object, protocol::accessible, "GetState"),
                         bus.call(budget, object, protocol::accessible, "GetInterfaces")});
    }
    QList<ElementTraits> found;
    for (size_t index = 0; index < calls.size(); ++index) {
        ElementTraits traits;
        traits.object = objects[qsizetype(index)];
        const auto role = co_await calls[index].role.answer();
        const auto states = co_await calls[index].states.answer();
        const auto interfaces = co_await calls[index].interfaces.answer();
        traits.role = uint(intValue(role).value_or(int(roles::unknown)));
        traits.states = decodeStates(firstValue(states));
        traits.interfaces = firstValue(interfaces).toStringList();
        found.append(traits);
    }
    co_return found;
}

QCoro::Task<QList<ObjectRef>> childrenOf(AtspiBus &bus, ObjectRef object, CallBudgetRef budget) {
    const PendingCall call = bus.call(budget, object, protocol::accessible, "GetChildren");
    const auto answer = co_await call.answer();
    co_return decodeObjects(firstValue(answer), maximumChildren);
}

QCoro::Task<std::optional<ElementTraits>> findFocusedBelow(AtspiBus &bus, QList<ObjectRef> tops,
                                                           CallBudgetRef budget) {
    QList<ObjectRef> waiting = std::move(tops);
    int visited = 0;
    while (!waiting.isEmpty() && visited < maximumVisited) {
        const QList<ObjectRef> wave = waiting.mid(0, maximumWave);
        waiting = waiting.mid(wave.size());
        visited += int(wave.size());

        std::vector<PendingCall> childCalls;
        for (const ObjectRef &object : wave)
            childCalls.push_back(bus.call(budget, object, protocol::accessible, "GetChildren"));
        const QList<ElementTraits> nodes = co_await examine(bus, wave, budget);
        for (size_t index = 0; index < childCalls.size(); ++index) {
            const ElementTraits &node = nodes[qsizetype(index)];
            if (node.isFocused() && node.hasText())
                co_return node;
            if (!node.states.has(State::visible) || node.states.has(State::managesDescendants))
                continue;
            const auto answer = co_await childCalls[index].answer();
            const QList<ObjectRef> children = decodeObjects(firstValue(answer), maximumChildren);
            for (const ObjectRef &child : children) {
                if (!child.isNull())
                    waiting.append(child);
            }
        }
    }
    co_return std::nullopt;
}

QCoro::Task<QList<ObjectRef>> matchFocused(AtspiBus &bus, QString service, CallBudgetRef budget) {
    MatchRule rule;
    rule.states = {1 << int(State::focused), 0};
    rule.stateMatch = matchAll;
    rule.attributeMatch = matchAll;
    rule.roleMatch = matchAll;
    rule.interfaceMatch = matchAll;
    constexpr uint canonicalOrder = 1;
    constexpr int maximumMatches = 8;
    const ObjectRef root{service, QLatin1String(protocol::rootPath)};
    QVariantList arguments;
    arguments << QVariant::fromValue(rule) << canonicalOrder << maximumMatches << true;
    const PendingCall call = bus.call(budget, root, protocol::collection, "GetMatches", arguments);
    const auto answer = co_await call.answer();
    co_return decodeObjects(firstValue(answer), maximumMatches);
}

} // namespace quillmender::atspi
