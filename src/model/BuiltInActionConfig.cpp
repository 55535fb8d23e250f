#include "model/BuiltInActionConfig.h"

#include <algorithm>

namespace quillmender {

QList<BuiltInActionConfig> starterActions() {
    QList<BuiltInActionConfig> actions;
    for (const auto action : allTextActions)
        actions.append({action, defaultTitle(action), defaultPromptTemplate(action), false});
    return actions;
}

QList<BuiltInActionConfig> reconciledBuiltInActions(const QList<BuiltInActionConfig> &stored) {
    auto actions = starterActions();
    for (auto &entry : actions) {
        const auto found = std::ranges::find(stored, entry.action, &BuiltInActionConfig::action);
        if (found != stored.end())
            entry = *found;
    }
    return actions;
}

} // namespace quillmender
