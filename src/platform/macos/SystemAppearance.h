#pragma once

#include "platform/Presence.h"

namespace quillmender {

/// The colour scheme that the application has now, and the accent colour in sRGB.
Appearance systemAppearance();

} // namespace quillmender
