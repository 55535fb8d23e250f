#pragma once

#include "ui/Announcer.h"

#include <QStringList>

#include <utility>

namespace quillmender {

/// What a window tells a screen reader to say.
class Announcements : public QObject {
  public:
    explicit Announcements(const QWidget &window) {
        for (const Announcer *announcer : window.findChildren<Announcer *>())
            connect(announcer, &Announcer::said, this,
                    [this](const QString &text) { heard_.append(text); });
    }

    /// Since the last call.
    QStringList take() { return std::exchange(heard_, {}); }

  private:
    QStringList heard_;
};

} // namespace quillmender
