#include "desktop/harness/ClipboardContents.h"

namespace quillmender::harness {

QByteArray ClipboardContents::bytes(const QByteArray &target) const {
    for (const ClipboardRepresentation &representation : representations) {
        if (representation.target == target)
            return representation.bytes;
    }
    return {};
}

} // namespace quillmender::harness
