#pragma once

#include "desktop/harness/ClipboardContents.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace quillmender {

/// What was seen of one session when everything had come to rest.
struct SessionRecord {
    QString textBefore;
    QString textAfter;
    /// What the text has to be if it was replaced; nothing when no request was sent.
    std::optional<QString> replaced;
    /// The message at the end; nothing when the panel had gone.
    std::optional<QString> message;
    int requests = 0;
    bool isKeyringStalled = false;
    harness::ClipboardContents clipboardBefore;
    harness::ClipboardContents clipboardAfter;
    /// Documents that are none of the session's, which have another text now.
    QStringList otherTexts;
    bool isAlive = true;
    qint64 longestWaitMs = 0;
    qint64 longestWaitOfBystanderMs = 0;
};

/// What is wrong with it, in words; nothing for a good one.
QStringList problemsOf(const SessionRecord &record);

} // namespace quillmender
