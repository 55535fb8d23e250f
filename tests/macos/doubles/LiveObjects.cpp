#include "doubles/LiveObjects.h"

namespace quillmender::doubles {

LiveObjects &LiveObjects::shared() {
    static LiveObjects objects;
    return objects;
}

std::string LiveObjects::uneven() const {
    std::string text;
    for (const auto &[kind, references] : references_) {
        if (references != 0)
            text += (text.empty() ? "" : " ") + kind + " " + std::to_string(references);
    }
    return text;
}

} // namespace quillmender::doubles
