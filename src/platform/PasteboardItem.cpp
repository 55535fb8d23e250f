#include "platform/PasteboardItem.h"

#include <algorithm>

namespace quillmender {

void PasteboardItem::setData(const QString &type, const QByteArray &data,
                             const QByteArray &platformTag) {
    const auto found = std::ranges::find(representations_, type, &PasteboardRepresentation::type);
    if (found != representations_.end())
        *found = {type, data, platformTag};
    else
        representations_.append({type, data, platformTag});
}

const PasteboardRepresentation *PasteboardItem::find(const QString &type) const {
    const auto found = std::ranges::find(representations_, type, &PasteboardRepresentation::type);
    return found == representations_.end() ? nullptr : &*found;
}

} // namespace quillmender
