#include "desktop/harness/wayland/WaylandClipboardOwner.h"

#include "desktop/harness/wayland/PipeReader.h"
#include "wlr-data-control-unstable-v1-client-protocol.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace quillmender::harness {

struct WaylandClipboardOwner::Events {
    using Source = zwlr_data_control_source_v1;

    static void send(void *self, Source * /*source*/, const char *type, int descriptor) {
        static_cast<WaylandClipboardOwner *>(self)->begin(type, descriptor);
    }
    static void cancel(void *self, Source * /*source*/) {
        static_cast<WaylandClipboardOwner *>(self)->owns_ = false;
    }

    static constexpr zwlr_data_control_source_v1_listener source{&send, &cancel};
};

WaylandClipboardOwner::WaylandClipboardOwner(const QString &socketPath,
                                             QList<ClipboardRepresentation> offer,
                                             SelectionKind kind)
    : offer_(std::move(offer)),
      control_(socketPath),
      source_(zwlr_data_control_manager_v1_create_data_source(control_.manager())),
      stopEvent_(::eventfd(0, EFD_CLOEXEC)) {
    // Who stops reading makes writing fail, not this process end.
    ::signal(SIGPIPE, SIG_IGN);
    zwlr_data_control_source_v1_add_listener(source_.get(), &Events::source, this);
    for (const ClipboardRepresentation &each : std::as_const(offer_))
        zwlr_data_control_source_v1_offer(source_.get(), each.target.constData());
    if (kind == SelectionKind::clipboard)
        zwlr_data_control_device_v1_set_selection(control_.device(), source_.get());
    else
        zwlr_data_control_device_v1_set_primary_selection(control_.device(), source_.get());
    control_.client().roundTrip();
    thread_ = std::thread(&WaylandClipboardOwner::run, this);
}

WaylandClipboardOwner::~WaylandClipboardOwner() {
    constexpr quint64 once = 1;
    [[maybe_unused]] const ssize_t written = ::write(stopEvent_, &once, sizeof(once));
    thread_.join();
    for (const Pipe &pipe : std::as_const(pipes_))
        ::close(pipe.descriptor);
    ::close(stopEvent_);
}

QList<QByteArray> WaylandClipboardOwner::requests() const {
    const std::scoped_lock lock(mutex_);
    QList<QByteArray> types;
    for (const ClipboardSend &each : sends_)
        types.append(each.type);
    return types;
}

void WaylandClipboardOwner::send(const QByteArray &type, SendManner manner) {
    const std::scoped_lock lock(mutex_);
    manners_.insert(type, manner);
}

void WaylandClipboardOwner::dieAt(const QByteArray &type) {
    const std::scoped_lock lock(mutex_);
    deadly_ = type;
}

QList<ClipboardSend> WaylandClipboardOwner::sends() const {
    const std::scoped_lock lock(mutex_);
    return sends_;
}

QByteArray WaylandClipboardOwner::bytesOf(const QByteArray &type) const {
    const auto found = std::find_if(offer_.cbegin(), offer_.cend(),
                                    [&](const auto &each) { return each.target == type; });
    return found == offer_.cend() ? QByteArray() : found->bytes;
}

void WaylandClipboardOwner::begin(const QByteArray &type, int descriptor) {
    ::fcntl(descriptor, F_SETFL, O_NONBLOCK);
    const qint64 reader = readerOfPipe(descriptor);
    const std::scoped_lock lock(mutex_);
    Pipe pipe{descriptor, sends_.size(), bytesOf(type), manners_.value(type)};
    if (type == deadly_)
        isDead_ = true;
    if (isDead_ || pipe.manner == SendManner::halfway || pipe.manner == SendManner::cutShort)
        pipe.bytes.truncate(pipe.bytes.size() / 2);
    sends_.append({type, reader});
    pipes_.append(pipe);
}

// False when there is nothing more to be done with the pipe.
bool WaylandClipboardOwner::advance(Pipe &pipe) {
    constexpr qsizetype slowPart = 4096;
    const std::scoped_lock lock(mutex_);
    ClipboardSend &send = sends_[pipe.index];
    const qsizetype size = pipe.bytes.size();
    while (pipe.manner != SendManner::never) {
        const qsizetype at =
            pipe.manner == SendManner::endlessly && size > 0 ? send.sent % size : send.sent;
        if (at >= size) {
            if (pipe.manner == SendManner::halfway)
                return true;
            break;
        }
        const qsizetype part =
            pipe.manner == SendManner::slowly ? std::min(slowPart, size - at) : size - at;
        const ssize_t written =
            ::write(pipe.descriptor, pipe.bytes.constData() + at, static_cast<size_t>(part));
        if (written < 0 && errno == EAGAIN)
            return true;
        if (written < 0)
            break;
        send.sent += written;
        if (pipe.manner == SendManner::endlessly ||
            (pipe.manner == SendManner::slowly && send.sent < size))
            return true;
    }
    if (pipe.manner == SendManner::never)
        return true;
    ::close(pipe.descriptor);
    send.isOver = true;
    return false;
}

int WaylandClipboardOwner::pauseMs() const {
    constexpr int slowPauseMs = 10;
    const bool isSlow = std::any_of(pipes_.cbegin(), pipes_.cend(), [](const Pipe &pipe) {
        return pipe.manner == SendManner::slowly;
    });
    return isSlow ? slowPauseMs : -1;
}

void WaylandClipboardOwner::run() {
    while (!isDead_) {
        if (!control_.client().dispatch())
            break;
        if (isDead_)
            break;
        pipes_.erase(std::remove_if(pipes_.begin(), pipes_.end(),
                                    [this](Pipe &pipe) { return !advance(pipe); }),
                     pipes_.end());
        std::vector<pollfd> sources{{wl_display_get_fd(control_.client().display()), POLLIN, 0},
                                    {stopEvent_, POLLIN, 0}};
        for (const Pipe &pipe : std::as_const(pipes_)) {
            // Of one that is not being written to, only that nobody reads it any more.
            const bool isWriting = pipe.manner == SendManner::promptly ||
                                   pipe.manner == SendManner::cutShort ||
                                   pipe.manner == SendManner::endlessly;
            sources.push_back({pipe.descriptor, static_cast<short>(isWriting ? POLLOUT : 0), 0});
        }
        ::poll(sources.data(), sources.size(), pauseMs());
        if (sources[1].revents != 0)
            return;
        for (size_t index = 2; index < sources.size(); ++index) {
            if ((sources[index].revents & POLLERR) == 0)
                continue;
            const std::scoped_lock lock(mutex_);
            Pipe &pipe = pipes_[static_cast<qsizetype>(index) - 2];
            pipe.manner = SendManner::promptly;
            pipe.bytes.clear();
        }
    }
    for (const Pipe &pipe : std::as_const(pipes_)) {
        [[maybe_unused]] const ssize_t written = ::write(pipe.descriptor, pipe.bytes.constData(),
                                                         static_cast<size_t>(pipe.bytes.size()));
        ::close(pipe.descriptor);
    }
    pipes_.clear();
    owns_ = false;
    // The rest of this object lives on; to the compositor this was its end.
    ::shutdown(wl_display_get_fd(control_.client().display()), SHUT_RDWR);
}

} // namespace quillmender::harness
