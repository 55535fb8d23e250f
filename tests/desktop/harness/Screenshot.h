#pragma once

#include <QImage>
#include <QRect>

namespace quillmender::harness {

class XcbConnection;

/// What the screen shows now; `area` in pixels, the whole screen when empty. A null image when the
/// server does not answer.
QImage takeScreenshot(XcbConnection &connection, QRect area = {});

} // namespace quillmender::harness
