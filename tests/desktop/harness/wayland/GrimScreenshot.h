#pragma once

#include <QImage>

class QProcessEnvironment;

namespace quillmender::harness {

class DesktopFolders;

/// What the screen of the environment's compositor shows. A null image when it cannot be had.
QImage takeGrimScreenshot(const DesktopFolders &folders, const QProcessEnvironment &environment);

} // namespace quillmender::harness
