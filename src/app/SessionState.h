#pragma once

#include "model/SelectionSession.h"

#include <QString>

#include <optional>

namespace quillmender {

/// Everything that the coordinator publishes of one session but for the work under way. As it is
/// made here, there is no session.
struct SessionState {
    SelectionSessionRef currentSession;
    QString selectedTextPreview;
    QString captureTitle = QStringLiteral("Selected Text");
    QString captureDescription;
    std::optional<QString> errorMessage;
    QString currentActionTitle;
    QString customInstruction;

    /// What is shown while an action is under way.
    static SessionState running(const QString &actionTitle);

    /// What is shown of a capture.
    static SessionState captured(SelectionSessionRef session);

    /// What is shown instead of one.
    static SessionState failed(const QString &message);
};

} // namespace quillmender
