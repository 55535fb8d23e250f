#pragma once

#include <QString>

#include <exception>

namespace quillmender {

/// What the user is told about a failure: its own description, whatever kind of error it is.
QString userMessage(const std::exception_ptr &error);

} // namespace quillmender
