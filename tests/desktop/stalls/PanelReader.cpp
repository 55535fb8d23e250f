#include "desktop/stalls/PanelReader.h"

namespace quillmender {

using harness::Accessible;

bool PanelReader::isGone() const {
    return desktop_.windows().titled(QStringLiteral("Quillmender")) == XCB_WINDOW_NONE;
}

std::optional<QString> PanelReader::firstShown(const QStringList &texts) {
    using namespace std::chrono_literals;
    const auto now = std::chrono::steady_clock::now();
    if (now - lastLook_ < 150ms || isGone())
        return std::nullopt;
    std::optional<QString> found;
    desktop_.accessible().find(program_, [&](const Accessible &widget) {
        const QString name = widget.name();
        if (texts.contains(name) && widget.hasState(harness::AccessibleState::showing))
            found = name;
        return found.has_value();
    });
    lastLook_ = std::chrono::steady_clock::now();
    return found;
}

const QStringList &PanelReader::messages() {
    static const QStringList all{message::nothingSelected, message::noFrontmost,
                                 message::notReplaced, message::noAccess, message::noKey};
    return all;
}

} // namespace quillmender
