#include "app/SessionState.h"

#include "app/TextPreview.h"

namespace quillmender {

SessionState SessionState::running(const QString &actionTitle) {
    SessionState state;
    state.currentActionTitle = actionTitle;
    return state;
}

SessionState SessionState::captured(SelectionSessionRef session) {
    SessionState state;
    state.selectedTextPreview = textPreview(session->selectedText);
    if (session->captureScope == CaptureScope::fullField) {
        state.captureTitle = QStringLiteral("Captured Field");
        state.captureDescription = QStringLiteral(
            "No selection was found, so Quillmender captured the full focused text field.");
    } else {
        state.captureDescription = QStringLiteral("Using only the highlighted text.");
    }
    state.currentSession = std::move(session);
    return state;
}

SessionState SessionState::failed(const QString &message) {
    SessionState state;
    state.errorMessage = message;
    return state;
}

} // namespace quillmender
