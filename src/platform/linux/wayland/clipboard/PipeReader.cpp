#include "platform/linux/wayland/clipboard/PipeReader.h"

#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>

namespace quillmender::wayland {

namespace {

constexpr qsizetype usualPipe = qsizetype{64} * 1024;
constexpr qsizetype largePipe = qsizetype{1024} * 1024;

} // namespace

PipeReader::PipeReader(Descriptor pipe, qsizetype most)
    : pipe_(std::move(pipe)),
      most_(most),
      hasFailed_(!pipe_.isOpen()) {
    if (hasFailed_)
        return;
    readable_ = std::make_unique<QSocketNotifier>(pipe_.get(), QSocketNotifier::Read);
    connect(readable_.get(), &QSocketNotifier::activated, this, &PipeReader::readOn);
}

PipeReader::~PipeReader() = default;

void PipeReader::readOn() {
    if (isOver())
        return;
    const qsizetype held = data_.size();
    // No more in a turn: others wait for theirs.
    const qsizetype room = std::min(std::max(held, usualPipe), largePipe);
    data_.resize(held + room);
    const ssize_t count = ::read(pipe_.get(), data_.data() + held, static_cast<size_t>(room));
    const int error = errno;
    data_.resize(held + std::max<qsizetype>(count, 0));
    if (count < 0) {
        if (error != EAGAIN && error != EINTR)
            close(true);
        return;
    }
    if (count == 0)
        return close(false);
    if (data_.size() > most_)
        return drop();
    // Each wake-up of both sides moves more then.
    if (held < usualPipe && data_.size() >= usualPipe)
        ::fcntl(pipe_.get(), F_SETPIPE_SZ, static_cast<int>(largePipe));
    Q_EMIT advanced();
}

void PipeReader::drop() {
    data_ = QByteArray();
    if (!isOver())
        close(true);
    hasFailed_ = true;
}

void PipeReader::close(bool hasFailed) {
    hasFailed_ = hasFailed;
    // It may be what calls us.
    readable_->setEnabled(false);
    readable_.release()->deleteLater();
    pipe_.close();
    if (data_.capacity() > largePipe)
        data_.squeeze();
    Q_EMIT advanced();
}

} // namespace quillmender::wayland
