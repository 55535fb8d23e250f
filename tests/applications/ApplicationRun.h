#pragma once

#include "applications/Field.h"
#include "applications/Observation.h"
#include "applications/RunningApplication.h"
#include "applications/Surroundings.h"

namespace quillmender::applications {

/// One application on a desktop of its own, and the sessions with it.
class ApplicationRun {
  public:
    /// Pictures and logs of what went wrong go into folders below `artifacts`.
    ApplicationRun(const Application &application, Surroundings surroundings, QString artifacts);
    ~ApplicationRun();

    /// All scenarios of the field whose names contain `wanted`; each is told when it is over.
    QList<Observation> run(const QString &wanted,
                           const std::function<void(const Observation &)> &tell);

  private:
    void start();
    bool isOnTheBus();
    Observation observe(const Scenario &scenario);
    QString capturedBy(const Outcome &outcome) const;
    void judge(const Scenario &scenario, const Outcome &outcome, Observation &seen);
    void keepArtifacts(const QString &scenario);

    const Application &application_;
    QString artifacts_;
    std::unique_ptr<harness::AnyDesktop> desktop_;
    ProductSession product_;
    std::optional<RunningApplication> running_;
    std::unique_ptr<Field> field_;
};

/// As the package manager tells it; empty when the package is not installed. Names of several
/// releases are separated by "|".
QString installedVersion(const QString &packages);

} // namespace quillmender::applications
