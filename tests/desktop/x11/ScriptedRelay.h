#pragma once

#include "platform/linux/KeyRelay.h"

#include <QList>
#include <gtest/gtest.h>

#include <functional>

namespace quillmender::x11 {

/// A relay that the keys of an application take, on which a test meets the chord: it is asked
/// before the chord, and again when the modifier is down and the key is to follow.
class ScriptedRelay : public KeyRelay {
  public:
    /// Each says whether the keys came through.
    using Turn = std::function<bool()>;

    explicit ScriptedRelay(QList<Turn> turns) : turns_(std::move(turns)) {}

    QCoro::Task<bool> waitUntilPassed(std::chrono::milliseconds) override {
        ++asked;
        if (turns_.isEmpty()) {
            ADD_FAILURE() << "asked too often";
            co_return false;
        }
        co_return turns_.takeFirst()();
    }

    /// The keys come through, and this happens when the modifier is down.
    static QList<Turn> beforeTheKey(const std::function<void()> &event) {
        return {[] { return true; },
                [event] {
                    event();
                    return true;
                }};
    }

    int asked = 0;

  private:
    QList<Turn> turns_;
};

} // namespace quillmender::x11
