#pragma once

#include <QByteArray>

namespace quillmender::harness {

/// How an owner of a clipboard hands one of its types over.
enum class SendManner {
    promptly,
    slowly,    ///< four kilobytes every ten milliseconds
    never,     ///< the pipe stays open and empty
    halfway,   ///< the first half, and then neither more nor an end
    cutShort,  ///< the first half, and then the end
    endlessly, ///< the bytes again and again
};

/// One type that an owner of a clipboard was asked for.
struct ClipboardSend {
    QByteArray type;
    qint64 reader = 0; ///< the process at the other end of the pipe; 0 when there is none any more
    qsizetype sent = 0;
    bool isOver = false; ///< the pipe is closed, by whichever side
};

} // namespace quillmender::harness
