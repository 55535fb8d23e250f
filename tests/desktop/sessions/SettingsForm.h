#pragma once

#include "desktop/harness/Desktop.h"

namespace quillmender {

/// The program's settings window, used with mouse and keyboard; constructed means that it is shown
/// and active.
class SettingsForm {
  public:
    SettingsForm(harness::Desktop &desktop, qint64 programId);

    /// The same again, after it was closed or covered.
    void waitUntilShown();

    /// The field with this label; waits for it.
    harness::Accessible field(const char *label);

    /// Types the text in place of what is in the field.
    harness::Accessible fill(const char *label, const QString &text);

    /// By its title bar's button; waits until it is gone.
    void close();

  private:
    harness::Desktop &desktop_;
    qint64 programId_;
};

} // namespace quillmender
