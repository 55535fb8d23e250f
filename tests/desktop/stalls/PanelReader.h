#pragma once

#include "desktop/harness/Desktop.h"

#include <QStringList>

#include <optional>

namespace quillmender {

/// What the panel tells its user.
class PanelReader {
  public:
    PanelReader(harness::Desktop &desktop, qint64 program) : desktop_(desktop), program_(program) {}

    bool isGone() const;

    /// The first of these texts that the panel shows. Looks a few times in a second only, however
    /// often it is asked: the panel that is looked at has to answer.
    std::optional<QString> firstShown(const QStringList &texts);

    /// Any of the described messages of failures.
    static const QStringList &messages();

  private:
    harness::Desktop &desktop_;
    qint64 program_;
    std::chrono::steady_clock::time_point lastLook_;
};

namespace message {
inline const QString nothingSelected =
    QStringLiteral("Select some text, or place the cursor inside a normal text field so "
                   "Quillmender can capture the whole field when possible.");
inline const QString noFrontmost =
    QStringLiteral("Quillmender could not determine the frontmost app.");
inline const QString notReplaced =
    QStringLiteral("Quillmender could not replace the selected text back in the source app.");
inline const QString noAccess = QStringLiteral(
    "Quillmender needs Accessibility access to read and replace selected text across apps.");
inline const QString noKey =
    QStringLiteral("Add your OpenAI API key in Settings before using Quillmender.");
} // namespace message

} // namespace quillmender
