#pragma once

#include "model/BuiltInActionConfig.h"
#include "model/CustomAction.h"

#include <variant>

namespace quillmender {

/// Either kind of stored action.
using ActionRecord = std::variant<BuiltInActionConfig, CustomAction>;

/// "builtin-" and the action's raw value, or "custom-" and the identifier's text. It does not
/// change when title or template do.
QString actionId(const ActionRecord &record);

QString actionTitle(const ActionRecord &record);
QString actionPromptTemplate(const ActionRecord &record);

/// The name of the symbol image that stands for the action.
QString actionSystemImage(const ActionRecord &record);

/// The identifier as 36 characters, upper case, with hyphens.
QString identifierText(const QUuid &id);

} // namespace quillmender
