#pragma once

#include "desktop/stalls/Stall.h"

#include <random>

namespace quillmender {

/// What happens in one session besides what its user does. The same text is the same session.
struct SessionPlan {
    enum class Application {
        onBus,  ///< an editor of our own, which is on the accessibility bus
        offBus, ///< the same, which is not
        mousepad,
        plainEdit, ///< Qt's, of several lines
        lineEdit,  ///< Qt's, of one line
    };
    enum class Clipboard {
        isKept, ///< by whoever has it
        isText,
        isRich,  ///< text, HTML and an image
        isLarge, ///< more than one property holds
    };

    Application application = Application::onBus;
    Clipboard clipboard = Clipboard::isRich;
    bool isWordOnly = true;          ///< else nothing is selected
    bool focusGoesElsewhere = false; ///< while the provider thinks
    bool isProgramFresh = false;     ///< and has never heard of the application
    QList<Stall> stalls;

    QString toString() const;
    /// Throws HarnessError for what is none.
    static SessionPlan fromString(const QString &text);

    using Random = std::mt19937;
    /// The session of this number under a seed.
    static SessionPlan draw(unsigned seed, int number);
};

} // namespace quillmender
