#include "platform/linux/wayland/clipboard/ClipboardServer.h"

#include "platform/linux/wayland/clipboard/PipeWriter.h"
#include "platform/linux/wayland/clipboard/ServingProcess.h"

#include <cerrno>
#include <sys/socket.h>

namespace quillmender::wayland {

ClipboardServer::ClipboardServer(DataControl &control, Descriptor starter, OfferedContents contents)
    : control_(control),
      starter_(std::move(starter)),
      contents_(std::move(contents)),
      owner_(control, Selection::clipboard),
      answer_(starter_.get(), QSocketNotifier::Read) {
    answer_.setEnabled(false);
    connect(&answer_, &QSocketNotifier::activated, this, &ClipboardServer::handleAnswer);
}

QCoro::Task<> ClipboardServer::begin() {
    co_await control_.catchUp();
    answer_.setEnabled(true);
    tell(serving::ready);
}

void ClipboardServer::tell(char word) {
    [[maybe_unused]] const ssize_t sent = ::send(starter_.get(), &word, 1, MSG_NOSIGNAL);
}

void ClipboardServer::handleAnswer() {
    char word = 0;
    const ssize_t count = ::recv(starter_.get(), &word, 1, MSG_DONTWAIT);
    if (count < 0 && errno == EAGAIN)
        return;
    answer_.setEnabled(false);
    const bool isAnswered = count == 1;
    const bool isFree = !control_.offer(Selection::clipboard);
    if (isAnswered ? word == serving::take : isFree)
        takeOver();
    else
        Q_EMIT done();
}

void ClipboardServer::takeOver() {
    if (!owner_.own(std::move(contents_))) {
        Q_EMIT done();
        return;
    }
    connect(&owner_, &SelectionOwner::changedByOthers, this, &ClipboardServer::endWhenServed);
    control_.afterRoundTrip(this, [this] {
        if (owner_.isOwner())
            tell(serving::serving);
    });
}

void ClipboardServer::endWhenServed() {
    const auto transfers =
        control_.findChildren<PipeWriter *>(QString(), Qt::FindDirectChildrenOnly);
    if (transfers.isEmpty())
        Q_EMIT done();
    for (PipeWriter *const each : transfers)
        connect(each, &QObject::destroyed, this, &ClipboardServer::endWhenServed,
                Qt::UniqueConnection);
}

} // namespace quillmender::wayland
