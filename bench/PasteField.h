#pragma once

#include "bench/Samples.h"
#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/TestApplication.h"

namespace quillmender::bench {

/// A field that accessibility does not see, with all of its text selected. It tells itself when a
/// text has come.
class PasteField {
  public:
    PasteField(harness::AnyDesktop &desktop, const QString &text);

    harness::WindowId window() const { return application_.window(); }
    void activate() { application_.activate(); }

    /// The moment at which a text of that length has come, which was not there before.
    TimePoint waitForText(qsizetype length);

    /// The moment after that at which the clipboard was taken. Nobody reads it for that: the program
    /// keeps what it lends for whoever reads.
    TimePoint waitForClipboard();

    /// The floor of a paste: another program takes the clipboard, and the user presses the keys.
    double pasteDirectlyMs(const QString &text);

  private:
    /// Of the next line that says so.
    TimePoint waitFor(const QByteArray &what, qsizetype length);

    harness::AnyDesktop &desktop_;
    harness::TestApplication application_;
    qsizetype seen_ = 0; ///< bytes of its log
    std::unique_ptr<harness::SelectionOwner> clipboard_;
};

} // namespace quillmender::bench
