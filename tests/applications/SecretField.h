#pragma once

#include "applications/Field.h"

namespace quillmender::applications {

/// A password field: what is in it is known because it was typed, and cannot be read.
class SecretField : public Field {
  public:
    explicit SecretField(const Application &application, harness::AnyDesktop &desktop)
        : application_(application),
          desktop_(desktop) {}

    QList<Scenario> scenarios() const override;
    void prepare(const Scenario &scenario) override;
    std::optional<QString> read(const QString &wanted) override { return wanted; }
    std::optional<QString> selected() override { return std::nullopt; }
    std::optional<int> undo(const QString &) override { return std::nullopt; }

  private:
    void selectAll();

    const Application &application_;
    harness::AnyDesktop &desktop_;
};

} // namespace quillmender::applications
