#pragma once

#include "applications/Application.h"
#include "applications/Scenario.h"

#include <memory>
#include <optional>

namespace quillmender::applications {

/// A text field of a running application, used as a person does: by keys, mouse and clipboard. Its
/// operations take the clipboard.
class Field {
  public:
    Field() = default;
    Field(const Field &) = delete;
    Field &operator=(const Field &) = delete;
    virtual ~Field() = default;

    static std::unique_ptr<Field> make(const Application &application, harness::AnyDesktop &desktop,
                                       RunningApplication &running);

    virtual QList<Scenario> scenarios() const = 0;

    /// Makes the text the only one in the field and selects in it what the scenario says. Throws
    /// HarnessError when the field does not take it.
    virtual void prepare(const Scenario &scenario) = 0;

    /// The text as the field handed it out when it was made ready; empty when that is not known.
    virtual QString placed() const { return {}; }

    /// What a session that went well leaves in the field.
    virtual QString expected(const Scenario &scenario) const { return scenario.replaced(); }

    /// Waits a moment for the text to become the wanted one; answers what it is. Absent when the
    /// text cannot be read.
    virtual std::optional<QString> read(const QString &wanted) = 0;

    /// What is selected now; absent when that cannot be told.
    virtual std::optional<QString> selected() = 0;

    /// How many steps of undo bring the text back; absent when none does.
    virtual std::optional<int> undo(const QString &wanted) = 0;
};

/// The text with line feeds for whatever the application has.
QString withPlainLineEnds(QString text);

/// The same, without line feeds at the end: some applications add one.
QString normalised(QString text);

} // namespace quillmender::applications
