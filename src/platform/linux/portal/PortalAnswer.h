#pragma once

#include <QString>
#include <QVariantMap>

namespace quillmender::portal {

/// What came of something that was asked of the desktop portal.
struct PortalAnswer {
    enum class Outcome {
        granted,
        cancelled,  ///< by the user
        failed,     ///< refused by the portal, or it has ended
        unanswered, ///< given up
    };
    Outcome outcome = Outcome::failed;
    /// Told with any outcome: some portals call it a failure and have done it all the same.
    QVariantMap results{};
    QString reason{}; ///< of what was not granted, in words for the log

    bool isGranted() const { return outcome == Outcome::granted; }
};

} // namespace quillmender::portal
