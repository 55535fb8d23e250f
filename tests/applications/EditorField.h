#pragma once

#include "applications/Field.h"

namespace quillmender::applications {

/// A field that knows select all, copy, paste and undo.
class EditorField : public Field {
  public:
    EditorField(const Application &application, harness::AnyDesktop &desktop)
        : application_(application),
          desktop_(desktop) {}

    QList<Scenario> scenarios() const override;
    void prepare(const Scenario &scenario) override;
    QString placed() const override { return placed_; }
    std::optional<QString> read(const QString &wanted) override;
    std::optional<QString> selected() override;
    std::optional<int> undo(const QString &wanted) override;

  protected:
    harness::UserInput &input() { return desktop_.input(); }
    bool select(const Scenario &scenario);

  private:
    bool place(const QString &text);
    void selectAll();
    /// To the line that the text before it leads to.
    void goToLine(const QString &before);
    void press(const QList<harness::UserInput::Keysym> &chord, qsizetype times);

    const Application &application_;
    harness::AnyDesktop &desktop_;
    QString placed_;
};

} // namespace quillmender::applications
