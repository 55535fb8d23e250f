#pragma once

#include <QString>

#include <exception>

namespace quillmender {

/// Why something failed, for the log. A message made elsewhere is never part of it: it may quote
/// the user's text or the key.
QString failureReason(const std::exception_ptr &error);

} // namespace quillmender
