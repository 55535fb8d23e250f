#pragma once

#include <QLoggingCategory>

namespace quillmender {

/// Never given contents of selections, only names of targets, windows and errors.
Q_DECLARE_LOGGING_CATEGORY(x11Log)

} // namespace quillmender
