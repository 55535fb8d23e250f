#pragma once

#include <QStringView>

namespace quillmender {

/// Whether the text is nothing but the same sign over and over, as a password field of Tk hands
/// out.
bool isMask(QStringView text);

} // namespace quillmender
