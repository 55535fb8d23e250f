#include "ui/ActionEditorState.h"

namespace quillmender {

QString ActionEditorState::id() const {
    return record_ ? actionId(*record_) : QStringLiteral("new");
}

QString ActionEditorState::heading() const {
    if (!record_)
        return QStringLiteral("New Action");
    return std::holds_alternative<BuiltInActionConfig>(*record_)
               ? QStringLiteral("Edit Starter Action")
               : QStringLiteral("Edit Action");
}

QString ActionEditorState::initialTitle() const {
    return record_ ? actionTitle(*record_) : QString();
}

QString ActionEditorState::initialTemplate() const {
    return record_ ? actionPromptTemplate(*record_)
                   : QStringLiteral("Rewrite the following text to match this instruction.\n"
                                    "Return only the final text.\n\nText:\n{{text}}");
}

} // namespace quillmender
