#pragma once

#include "applications/ProductSession.h"

#include <QJsonObject>

namespace quillmender::applications {

/// What was seen of one session with one application.
struct Observation {
    enum class Verdict {
        /// The answer stands where the text was.
        replaced,
        /// A described message, and nothing is changed.
        refused,
        /// Something else: the one thing that must not happen.
        wrong,
        /// The application did not do what the test asked of it.
        notTried,
    };

    QString scenario;
    Verdict verdict = Verdict::notTried;
    QString capture;
    QString route;
    QString message;
    /// What is wrong, or why it was not tried.
    QString remark;
    /// Absent when there was no session.
    std::optional<bool> clipboardIdentical;
    /// Of the text, where it was made with the line ends of Windows, as its field hands it out.
    QString lineEndsBefore;
    /// The same after the session, and where only the answer has them.
    QString lineEndsAfter;
    std::optional<bool> isInsertedSelected;
    std::optional<int> undoSteps;
    std::optional<int> hotKeyToPanelMs;
    std::optional<int> answerToTextMs;

    /// Of an application, or a desktop, that did not start.
    static Observation notStarted(const char *why);

    QJsonObject toJson() const;
    static Observation fromJson(const QJsonObject &object);
};

} // namespace quillmender::applications
