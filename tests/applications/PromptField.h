#pragma once

#include "applications/Field.h"

namespace quillmender::applications {

/// A program in a terminal whose screen is full of one word. It is selected with the mouse; the
/// answer arrives where the program's cursor is.
class PromptField : public Field {
  public:
    PromptField(const Application &application, harness::AnyDesktop &desktop,
                RunningApplication &running)
        : application_(application),
          desktop_(desktop),
          running_(running) {}

    QList<Scenario> scenarios() const override;
    void prepare(const Scenario &scenario) override;
    QString expected(const Scenario &scenario) const override;
    std::optional<QString> read(const QString &wanted) override;
    std::optional<QString> selected() override { return std::nullopt; }
    std::optional<int> undo(const QString &) override { return std::nullopt; }

  private:
    std::optional<QString> prompt();

    const Application &application_;
    harness::AnyDesktop &desktop_;
    RunningApplication &running_;
};

} // namespace quillmender::applications
