#include "desktop/harness/HarnessError.h"
#include "desktop/stalls/StallFixture.h"

#include <iostream>

namespace quillmender {
namespace {

int fromEnvironment(const char *name, int usual) {
    bool isNumber = false;
    const int value = qEnvironmentVariableIntValue(name, &isNumber);
    return isNumber && value > 0 ? value : usual;
}

/// $QUILLMENDER_STALL_SESSIONS sessions from the number $QUILLMENDER_STALL_FIRST on, drawn from
/// $QUILLMENDER_SEED; or those that $QUILLMENDER_STALL_PLAN describes, with semicolons between
/// them. It goes on after a failure until there are $QUILLMENDER_STALL_FAILURES.
class StallTest : public StallFixture {
  protected:
    /// The session, and a plain one in the same application after it.
    void playBoth(const SessionPlan &plan, const std::string &name) {
        std::cout << name << ": " << plan.toString().toStdString() << std::endl;
        QStringList problems = problemsIn(plan);
        const bool isReplaced = problems.isEmpty() && wasReplaced();
        replaced_ += isReplaced ? 1 : 0;
        traces_ = traces();
        if (problems.isEmpty()) {
            problems = problemsAfterwards(plan.application);
            if (problems.isEmpty())
                return;
            problems.prepend(QStringLiteral("a plain session afterwards:"));
            traces_ = traces();
        }
        ++failures_;
        ADD_FAILURE() << name << ": " << plan.toString().toStdString() << "\n    "
                      << problems.join(QStringLiteral("\n    ")).toStdString()
                      << "\n  traces:\n    " << lastTraces();
        startAgain();
    }

    std::string lastTraces() const { return traces_.join(QStringLiteral("\n    ")).toStdString(); }
    int failures() const { return failures_; }
    int replaced() const { return replaced_; }

  private:
    /// Of a plain session. A machine that is very busy can make it fail as described, but not for
    /// ever.
    QStringList problemsAfterwards(SessionPlan::Application application) {
        SessionPlan plain;
        plain.application = application;
        plain.clipboard = SessionPlan::Clipboard::isKept;
        constexpr int attempts = 3;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            const QStringList problems = problemsIn(plain);
            if (!problems.isEmpty() || wasReplaced())
                return problems;
        }
        return {QStringLiteral("it replaced nothing")};
    }

    QStringList problemsIn(const SessionPlan &plan) {
        try {
            return play(plan);
        } catch (const harness::HarnessError &error) {
            return {QString::fromUtf8(error.what())};
        }
    }

    QStringList traces_;
    int failures_ = 0;
    int replaced_ = 0;
};

TEST_F(StallTest, TheWordsSurvivePartnersThatStall) {
    start();
    const QStringList plans =
        qEnvironmentVariable("QUILLMENDER_STALL_PLAN").split(u';', Qt::SkipEmptyParts);
    for (const QString &plan : plans) {
        playBoth(SessionPlan::fromString(plan), "by hand");
        std::cout << "  " << lastTraces() << std::endl;
    }
    if (!plans.isEmpty())
        return;

    const auto seed =
        unsigned(fromEnvironment("QUILLMENDER_SEED", int(std::random_device{}() & 0x7fffffffU)));
    const int first = fromEnvironment("QUILLMENDER_STALL_FIRST", 1);
    const int last = first - 1 + fromEnvironment("QUILLMENDER_STALL_SESSIONS", 40);
    const int mostFailures = fromEnvironment("QUILLMENDER_STALL_FAILURES", 3);
    std::cout << "seed " << seed << std::endl;
    RecordProperty("seed", int(seed));
    for (int number = first; number <= last && failures() < mostFailures; ++number) {
        playBoth(SessionPlan::draw(seed, number),
                 "seed " + std::to_string(seed) + ", session " + std::to_string(number));
    }
    std::cout << replaced() << " of " << last - first + 1 << " sessions replaced their text, "
              << failures() << " failed" << std::endl;
}

} // namespace
} // namespace quillmender
