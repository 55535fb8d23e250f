#include "platform/linux/wayland/clipboard/OwnerQuestion.h"

#include "platform/linux/wayland/clipboard/ClipboardText.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <utility>

namespace quillmender::wayland {

using namespace std::chrono_literals;

namespace {

constexpr size_t oneReading = size_t{64} * 1024;

/// The process behind what has just been read; 0 when the system does not say.
qint64 writerOf(msghdr &message) {
    for (cmsghdr *each = CMSG_FIRSTHDR(&message); each != nullptr;
         each = CMSG_NXTHDR(&message, each)) {
        if (each->cmsg_level != SOL_SOCKET || each->cmsg_type != SCM_CREDENTIALS)
            continue;
        ucred writer{};
        std::memcpy(&writer, CMSG_DATA(each), sizeof writer);
        return writer.pid;
    }
    return 0;
}

} // namespace

OwnerQuestion::OwnerQuestion(DataControl &control, const DataOffer &offer) : QObject(&control) {
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this, &OwnerQuestion::end);
    ask(offer);
    patience_.start(socket_.isOpen() ? 5s : 0s);
}

OwnerQuestion::~OwnerQuestion() = default;

void OwnerQuestion::ask(const DataOffer &offer) {
    QList<QByteArray> types = textTypes(offer.types());
    if (types.isEmpty())
        types = offer.types();
    std::array<int, 2> ends{};
    if (types.isEmpty() || ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return;
    socket_ = Descriptor(ends[0]);
    const Descriptor owners(ends[1]);
    // Only ours: the owner may not expect the other end to be like that.
    ::fcntl(socket_.get(), F_SETFL, O_NONBLOCK);
    const int isOn = 1;
    ::setsockopt(socket_.get(), SOL_SOCKET, SO_PASSCRED, &isOn, sizeof isOn);
    readable_ = std::make_unique<QSocketNotifier>(socket_.get(), QSocketNotifier::Read);
    connect(readable_.get(), &QSocketNotifier::activated, this, &OwnerQuestion::listen);
    offer.receiveInto(types.constFirst(), owners);
}

void OwnerQuestion::listen() {
    if (!readable_)
        return;
    std::array<char, oneReading> data{};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
    iovec part{data.data(), data.size()};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t count = ::recvmsg(socket_.get(), &message, MSG_CMSG_CLOEXEC);
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0)
        return end();
    answer(writerOf(message));
}

void OwnerQuestion::answer(qint64 processId) {
    if (!std::exchange(isAnswered_, true))
        Q_EMIT answered(processId);
}

void OwnerQuestion::end() {
    patience_.stop();
    if (readable_) {
        // It may be what calls us.
        readable_->setEnabled(false);
        readable_.release()->deleteLater();
    }
    answer(0);
    deleteLater();
}

} // namespace quillmender::wayland
