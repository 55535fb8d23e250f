#pragma once

#include "platform/Permission.h"

namespace quillmender::fakes {

/// Stands as it is told to, and counts how often it was asked for.
class FakePermission : public Permission {
  public:
    State state() const override { return state_; }
    QString sentence() const override { return sentence_; }
    void ask() override { ++asked; }

    void become(State state, const QString &sentence) {
        state_ = state;
        sentence_ = sentence;
        Q_EMIT changed();
    }

    int asked = 0;

  private:
    State state_ = State::unavailable;
    QString sentence_ = QStringLiteral("How it stands.");
};

} // namespace quillmender::fakes
