#include "platform/linux/wayland/clipboard/PipeWriter.h"

#include <QLoggingCategory>
#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>

namespace quillmender::wayland {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)

/// A reader that goes away must not end the program. Programs that are started from here get the
/// signal back, as QProcess and posix_spawn's attributes see to.
void ignoreClosedPipes() {
    static const bool isDone = ::signal(SIGPIPE, SIG_IGN) != SIG_ERR;
    Q_UNUSED(isDone)
}

} // namespace

PipeWriter::PipeWriter(Descriptor pipe, QByteArray data, QObject *parent,
                       std::chrono::milliseconds patience)
    : QObject(parent),
      pipe_(std::move(pipe)),
      data_(std::move(data)) {
    ignoreClosedPipes();
    ::fcntl(pipe_.get(), F_SETFL, ::fcntl(pipe_.get(), F_GETFL) | O_NONBLOCK);
    writable_ = std::make_unique<QSocketNotifier>(pipe_.get(), QSocketNotifier::Write);
    connect(writable_.get(), &QSocketNotifier::activated, this, &PipeWriter::writeOn);
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this, [this] {
        qCInfo(log, "a reader of the clipboard stopped taking its data");
        finish(false);
    });
    patience_.start(patience);
}

PipeWriter::~PipeWriter() {
    if (pipe_.isOpen())
        Q_EMIT finished(false);
}

void PipeWriter::writeOn() {
    if (!pipe_.isOpen())
        return;
    // No more in a turn: others wait for theirs.
    constexpr qsizetype most = qsizetype{1024} * 1024;
    const qsizetype left = data_.size() - sent_;
    if (left == 0)
        return finish(true);
    const ssize_t count =
        ::write(pipe_.get(), data_.constData() + sent_, static_cast<size_t>(std::min(left, most)));
    if (count < 0) {
        if (errno != EAGAIN && errno != EINTR)
            finish(false);
        return;
    }
    sent_ += count;
    patience_.start();
    if (sent_ == data_.size())
        finish(true);
}

void PipeWriter::finish(bool isComplete) {
    patience_.stop();
    // It may be what calls us.
    writable_->setEnabled(false);
    writable_.release()->deleteLater();
    pipe_.close();
    data_ = QByteArray();
    deleteLater();
    Q_EMIT finished(isComplete);
}

} // namespace quillmender::wayland
