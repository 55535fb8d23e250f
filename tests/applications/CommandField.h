#pragma once

#include "applications/Field.h"

namespace quillmender::applications {

/// An editor that is used by its own commands, and told of through files.
class CommandField : public Field {
  public:
    CommandField(const Application &application, harness::AnyDesktop &desktop)
        : application_(application),
          desktop_(desktop) {}

    QList<Scenario> scenarios() const override;
    void prepare(const Scenario &scenario) override;
    std::optional<QString> read(const QString &wanted) override;
    std::optional<QString> selected() override { return std::nullopt; }
    std::optional<int> undo(const QString &wanted) override;

  private:
    QString home(const char *file) const;
    std::optional<QString> save();

    const Application &application_;
    harness::AnyDesktop &desktop_;
};

} // namespace quillmender::applications
