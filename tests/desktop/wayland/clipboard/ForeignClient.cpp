#include "desktop/wayland/clipboard/ForeignClient.h"

#include "desktop/x11/WaitFor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <thread>

namespace quillmender::wayland {

struct ForeignClient::Events {
    using Device = zwlr_data_control_device_v1;
    using Offer = zwlr_data_control_offer_v1;
    using Source = zwlr_data_control_source_v1;

    static ForeignClient &of(void *self) { return *static_cast<ForeignClient *>(self); }

    static void announced(void *self, Device *, Offer *offer) {
        of(self).offers_.insert(offer, {});
        static constexpr zwlr_data_control_offer_v1_listener listener{typed};
        zwlr_data_control_offer_v1_add_listener(offer, &listener, self);
    }
    static void typed(void *self, Offer *offer, const char *type) {
        of(self).offers_[offer].append(type);
    }
    static void selected(ForeignClient &self, Selection selection, Offer *offer) {
        if (selection != self.selection_)
            return;
        self.offer_ = offer;
        ++self.changes_;
    }
    static void clipboard(void *self, Device *, Offer *offer) {
        selected(of(self), Selection::clipboard, offer);
    }
    static void primary(void *self, Device *, Offer *offer) {
        selected(of(self), Selection::primary, offer);
    }
    static void finished(void *, Device *) {}
    static constexpr zwlr_data_control_device_v1_listener deviceEvents{announced, clipboard,
                                                                       finished, primary};

    static void sent(void *self, Source *source, const char *type, int32_t number) {
        Descriptor pipe(number);
        if (of(self).source_.get() != source)
            return;
        of(self).asked_.append(type);
        for (const Type &each : QList<Type>(of(self).owned_)) {
            if (each.name == type)
                return each.answer(std::move(pipe));
        }
    }
    static void cancelled(void *self, Source *source) {
        if (of(self).source_.get() == source)
            of(self).source_.reset();
    }
    static constexpr zwlr_data_control_source_v1_listener sourceEvents{sent, cancelled};
};

ForeignClient::ForeignClient(const QByteArray &display, Selection selection)
    : selection_(selection),
      connection_(openPatiently(display)) {
    if (!connection_ || !connection_->seat()) {
        ADD_FAILURE() << "no compositor, or no seat";
        return;
    }
    manager_ =
        connection_->bind<zwlr_data_control_manager_v1>(zwlr_data_control_manager_v1_interface, 2);
    device_.reset(
        zwlr_data_control_manager_v1_get_data_device(manager_.get(), connection_->seat()));
    zwlr_data_control_device_v1_add_listener(device_.get(), &Events::deviceEvents, this);
    settle();
}

ForeignClient::~ForeignClient() {
    die();
}

void ForeignClient::die() {
    for (auto *const offer : offers_.keys())
        zwlr_data_control_offer_v1_destroy(offer);
    offers_.clear();
    source_.reset();
    device_.reset();
    manager_.reset();
    connection_.reset();
}

void ForeignClient::declare(const QByteArray &type, const QByteArray &data) {
    declareSpecially(type, [data](Descriptor pipe) { writeInBackground(std::move(pipe), data); });
}

void ForeignClient::declareSpecially(const QByteArray &type, Answer answer) {
    declared_.append({type, std::move(answer)});
}

void ForeignClient::own() {
    owned_ = std::exchange(declared_, {});
    Proxy<zwlr_data_control_source_v1> source(
        zwlr_data_control_manager_v1_create_data_source(manager_.get()));
    zwlr_data_control_source_v1_add_listener(source.get(), &Events::sourceEvents, this);
    for (const Type &each : owned_)
        zwlr_data_control_source_v1_offer(source.get(), each.name.constData());
    if (selection_ == Selection::clipboard)
        zwlr_data_control_device_v1_set_selection(device_.get(), source.get());
    else
        zwlr_data_control_device_v1_set_primary_selection(device_.get(), source.get());
    source_ = std::move(source);
    settleAlone();
}

void ForeignClient::offer(const QByteArray &type, const QByteArray &data) {
    declare(type, data);
    own();
    settle();
}

void ForeignClient::clear() {
    if (selection_ == Selection::clipboard)
        zwlr_data_control_device_v1_set_selection(device_.get(), nullptr);
    else
        zwlr_data_control_device_v1_set_primary_selection(device_.get(), nullptr);
    settle();
}

QList<QByteArray> ForeignClient::types() {
    settle();
    return offers_.value(offer_);
}

Descriptor ForeignClient::ask(const QByteArray &type) {
    settle();
    std::array<int, 2> ends{};
    if (!offer_ || ::pipe2(ends.data(), O_CLOEXEC) != 0)
        return Descriptor();
    Descriptor reading(ends[0]);
    const Descriptor writing(ends[1]);
    zwlr_data_control_offer_v1_receive(offer_, type.constData(), writing.get());
    connection_->flush();
    return reading;
}

std::optional<QByteArray> ForeignClient::fetch(const QByteArray &type) {
    Descriptor pipe = ask(type);
    if (!pipe.isOpen())
        return std::nullopt;
    return readToEnd(std::move(pipe));
}

void ForeignClient::settle() {
    QCoro::waitFor(connection_->roundTrip(std::chrono::seconds(10)));
}

void ForeignClient::settleAlone() {
    EXPECT_TRUE(connection_->settle(std::chrono::seconds(10)));
}

std::unique_ptr<WaylandConnection> openPatiently(const QByteArray &display) {
    std::unique_ptr<WaylandConnection> connection;
    x11::waitFor([&] {
        connection = WaylandConnection::open(display);
        return connection != nullptr;
    });
    return connection;
}

void writeInBackground(Descriptor pipe, QByteArray data) {
    std::thread([pipe = std::move(pipe), data = std::move(data)]() mutable {
        sigset_t brokenPipe;
        ::sigemptyset(&brokenPipe);
        ::sigaddset(&brokenPipe, SIGPIPE);
        ::pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
        qsizetype written = 0;
        while (written < data.size()) {
            const ssize_t count = ::write(pipe.get(), data.constData() + written,
                                          static_cast<size_t>(data.size() - written));
            if (count < 0)
                break;
            written += count;
        }
        // The next read finds the end before the test goes on to anything else.
        pipe.close();
    }).detach();
}

QByteArray readToEnd(Descriptor pipe) {
    QByteArray all;
    std::atomic_bool isDone = false;
    std::thread reader([&] {
        QByteArray chunk(1 << 16, Qt::Uninitialized);
        for (;;) {
            const ssize_t count =
                ::read(pipe.get(), chunk.data(), static_cast<size_t>(chunk.size()));
            if (count <= 0)
                break;
            all.append(chunk.constData(), count);
        }
        isDone = true;
    });
    if (!x11::waitFor([&] { return isDone.load(); })) {
        ADD_FAILURE() << "the end does not come";
        reader.detach();
        std::abort();
    }
    reader.join();
    return all;
}

QByteArray pattern(qsizetype size) {
    QByteArray bytes(size, Qt::Uninitialized);
    for (qsizetype i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 131 + i / 251);
    return bytes;
}

} // namespace quillmender::wayland
