#pragma once

#include <QString>

namespace quillmender {

/// Whether the host of an address is the machine that this program runs on, as far as its name or
/// number tells: nobody is asked.
bool isThisMachine(const QString &host);

} // namespace quillmender
