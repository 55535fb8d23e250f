#pragma once

#include <QtGlobal>

namespace quillmender::harness {

/// The process that has the reading end of a pipe, of those that this one may look into; 0 when
/// there is none.
qint64 readerOfPipe(int descriptor);

} // namespace quillmender::harness
