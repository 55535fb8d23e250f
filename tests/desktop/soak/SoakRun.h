#pragma once

#include "desktop/harness/SelectionOwner.h"
#include "desktop/soak/SoakPartner.h"

#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace quillmender {

class SessionSteps;

/// Session after session in one process: $QUILLMENDER_SOAK_SESSIONS of them, drawn from
/// $QUILLMENDER_SOAK_SEED.
class SoakRun {
  public:
    explicit SoakRun(SessionSteps &session);

    void add(std::unique_ptr<SoakPartner> partner) { partners_.push_back(std::move(partner)); }

    /// Plays them all, and expects that the program holds no more at the end than when it was warm.
    /// `more` counts what else it can hold on this desktop, 0 where there is nothing.
    void play(const std::function<qint64()> &more);

  private:
    int draw(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }
    void takeClipboard();
    void playOne();

    SessionSteps &session_;
    unsigned seed_;
    std::mt19937 random_;
    std::vector<std::unique_ptr<SoakPartner>> partners_;
    std::unique_ptr<harness::SelectionOwner> owner_;
    int sessions_ = 0;
    int written_ = 0;
};

/// A number in the environment, else the usual one.
int fromEnvironment(const char *name, int usual);

} // namespace quillmender
