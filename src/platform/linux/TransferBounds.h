#pragma once

#include <QtGlobal>

namespace quillmender {

/// How many bytes one reading of a selection may hold: far more than anybody copies, and less than
/// would hurt the machine. An owner that sends without end meets them.
struct TransferBounds {
    qsizetype perTarget = qsizetype{512} * 1024 * 1024;
    qsizetype total = qsizetype{1024} * 1024 * 1024;
};

} // namespace quillmender
