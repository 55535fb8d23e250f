#pragma once

#include "bench/Samples.h"
#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/TestApplication.h"

namespace quillmender::bench {

/// A real editor whose text is looked at through the accessibility bus.
class Editor {
  public:
    enum class Kind { mousepad, qtPlainText };

    Editor(harness::AnyDesktop &desktop, Kind kind);

    harness::WindowId window() const { return application_.window(); }
    void activate() { application_.activate(); }

    /// Puts the text in place of the old one and selects it.
    void fill(const QString &text);

    /// Blocks until the text has that many characters; looks every half millisecond.
    TimePoint waitForCharacterCount(int count) const;

    /// The floor of a capture: one call that gets the whole text.
    double readDirectlyMs() const;

    /// The floor of a write-back: one call that sets the whole text, until it is there.
    double writeDirectlyMs(const QString &text) const;

  private:
    int characterCount() const;
    QDBusMessage call(const char *interface, const char *method,
                      const QList<QVariant> &arguments) const;

    harness::TestApplication application_;
    QDBusConnection bus_;
    harness::Accessible text_;
};

/// Lines of plain words, that many bytes in all. `tag` makes it differ from others.
QString sampleText(qsizetype bytes, int tag = 0);

} // namespace quillmender::bench
