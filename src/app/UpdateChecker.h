#pragma once

#include "app/ReleaseManifest.h"
#include "providers/HttpTransport.h"

#include <QCoroTask>

#include <optional>

namespace quillmender {

/// Asks the release host for the newest version. Holds no state of its own; the transport must
/// outlive it and its requests.
class UpdateChecker {
  public:
    explicit UpdateChecker(HttpTransport &transport) : transport_(&transport) {}

    /// The published release when it is newer than the running version. Absent otherwise, whatever
    /// went wrong: it never throws, asks once, and follows redirects to https only. Nobody is asked
    /// when the host lies under `.example`, where by RFC 2606 there is none.
    QCoro::Task<std::optional<ReleaseManifest>> checkForUpdate(QString currentVersion,
                                                               QUrl manifestURL) const;

  private:
    /// Whether the candidate comes after the reference: both are dotted numbers; a missing or
    /// unreadable one counts as 0.
    static bool isNewer(const QString &candidate, const QString &reference);

    HttpTransport *transport_;
};

} // namespace quillmender
