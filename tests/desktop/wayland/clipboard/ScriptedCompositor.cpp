#include "desktop/wayland/clipboard/ScriptedCompositor.h"

#include <gtest/gtest.h>

#include <ext-data-control-v1-client-protocol.h>
#include <future>
#include <sys/eventfd.h>
#include <unistd.h>
#include <wayland-server-protocol.h>
#include <wlr-data-control-unstable-v1-client-protocol.h>

namespace quillmender::wayland {

namespace {

// As in the requests and events of both protocols.
enum DeviceEvent { dataOffer, selection, finished, primarySelection };
enum SourceEvent { send, cancelled };
enum OfferEvent { offered };

void destroy(wl_client *, wl_resource *resource) {
    wl_resource_destroy(resource);
}

} // namespace

struct ScriptedCompositor::Requests {
    static ScriptedCompositor &of(wl_resource *resource) {
        return *static_cast<ScriptedCompositor *>(wl_resource_get_user_data(resource));
    }

    struct Seat {
        void (*getPointer)(wl_client *, wl_resource *, uint32_t);
        void (*getKeyboard)(wl_client *, wl_resource *, uint32_t);
        void (*getTouch)(wl_client *, wl_resource *, uint32_t);
        void (*release)(wl_client *, wl_resource *);
    };
    static constexpr Seat seatRequests{nullptr, nullptr, nullptr, destroy};

    static void bindSeat(wl_client *client, void *self, uint32_t version, uint32_t id) {
        wl_resource *const resource =
            wl_resource_create(client, &wl_seat_interface, static_cast<int>(version), id);
        wl_resource_set_implementation(resource, &seatRequests, self, nullptr);
    }

    struct Offer {
        void (*receive)(wl_client *, wl_resource *, const char *, int32_t);
        void (*destroy)(wl_client *, wl_resource *);
    };
    static void receive(wl_client *, wl_resource *resource, const char *type, int32_t pipe) {
        of(resource).received.append(type);
        [[maybe_unused]] const ssize_t written = ::write(pipe, type, strlen(type));
        ::close(pipe);
    }
    static constexpr Offer offerRequests{receive, destroy};
    static void offerGone(wl_resource *resource) { of(resource).offers.removeOne(resource); }

    struct Source {
        void (*offer)(wl_client *, wl_resource *, const char *);
        void (*destroy)(wl_client *, wl_resource *);
    };
    static void offerType(wl_client *, wl_resource *resource, const char *type) {
        of(resource).sourceTypes.append(type);
    }
    static constexpr Source sourceRequests{offerType, destroy};
    static void sourceGone(wl_resource *resource) {
        if (of(resource).source == resource)
            of(resource).source = nullptr;
    }

    struct Device {
        void (*setSelection)(wl_client *, wl_resource *, wl_resource *);
        void (*destroy)(wl_client *, wl_resource *);
        void (*setPrimary)(wl_client *, wl_resource *, wl_resource *);
    };
    static void setSelection(wl_client *, wl_resource *resource, wl_resource *chosen) {
        of(resource).source = chosen;
        if (of(resource).whenSet)
            of(resource).whenSet();
    }
    static void setPrimary(wl_client *, wl_resource *, wl_resource *) {}
    static constexpr Device deviceRequests{setSelection, destroy, setPrimary};
    static void deviceGone(wl_resource *resource) {
        if (of(resource).device == resource)
            of(resource).device = nullptr;
    }

    struct Manager {
        void (*createSource)(wl_client *, wl_resource *, uint32_t);
        void (*getDevice)(wl_client *, wl_resource *, uint32_t, wl_resource *);
        void (*destroy)(wl_client *, wl_resource *);
    };
    static void createSource(wl_client *client, wl_resource *manager, uint32_t id) {
        ScriptedCompositor &self = of(manager);
        wl_resource *const resource = wl_resource_create(client, self.current_.source, 1, id);
        self.sourceTypes.clear();
        wl_resource_set_implementation(resource, &sourceRequests, &self, sourceGone);
    }
    static void getDevice(wl_client *client, wl_resource *manager, uint32_t id, wl_resource *) {
        ScriptedCompositor &self = of(manager);
        self.device = wl_resource_create(client, self.current_.device, self.current_.version, id);
        ++self.devices;
        wl_resource_set_implementation(self.device, &deviceRequests, &self, deviceGone);
    }
    static constexpr Manager managerRequests{createSource, getDevice, destroy};

    static void bindManager(wl_client *client, void *data, uint32_t version, uint32_t id) {
        const Bound &bound = *static_cast<Bound *>(data);
        bound.self->current_ = bound.protocol;
        bound.self->boundProtocol = bound.protocol.manager->name;
        wl_resource *const resource =
            wl_resource_create(client, bound.protocol.manager, static_cast<int>(version), id);
        wl_resource_set_implementation(resource, &managerRequests, bound.self, nullptr);
    }
};

ScriptedCompositor::Protocol ScriptedCompositor::ext() {
    return {&ext_data_control_manager_v1_interface, &ext_data_control_device_v1_interface,
            &ext_data_control_source_v1_interface, &ext_data_control_offer_v1_interface, 1};
}

ScriptedCompositor::Protocol ScriptedCompositor::wlr(int version) {
    return {&zwlr_data_control_manager_v1_interface, &zwlr_data_control_device_v1_interface,
            &zwlr_data_control_source_v1_interface, &zwlr_data_control_offer_v1_interface, version};
}

ScriptedCompositor::ScriptedCompositor(const QList<Protocol> &protocols)
    : display_(wl_display_create()),
      wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    qputenv("XDG_RUNTIME_DIR", folder_.path().toLocal8Bit());
    EXPECT_EQ(wl_display_add_socket(display_, "scripted"), 0);
    announceSeat();
    for (const Protocol &each : protocols) {
        bound_.append(new Bound{this, each});
        wl_global_create(display_, each.manager, each.version, bound_.constLast(),
                         Requests::bindManager);
    }
    thread_ = std::thread([this] { serve(); });
}

ScriptedCompositor::~ScriptedCompositor() {
    isOver_ = true;
    eventfd_write(wake_, 1);
    thread_.join();
    wl_display_destroy_clients(display_);
    wl_display_destroy(display_);
    qDeleteAll(bound_);
    ::close(wake_);
}

QByteArray ScriptedCompositor::display() const {
    return folder_.filePath(QStringLiteral("scripted")).toLocal8Bit();
}

void ScriptedCompositor::serve() {
    wl_event_loop *const loop = wl_display_get_event_loop(display_);
    wl_event_source *const wakes = wl_event_loop_add_fd(
        loop, wake_, WL_EVENT_READABLE,
        [](int wake, uint32_t, void *data) {
            auto &self = *static_cast<ScriptedCompositor *>(data);
            eventfd_t count = 0;
            eventfd_read(wake, &count);
            const std::lock_guard lock(self.mutex_);
            if (const auto script = std::exchange(self.script_, nullptr))
                script();
            return 0;
        },
        this);
    while (!isOver_) {
        wl_event_loop_dispatch(loop, -1);
        wl_display_flush_clients(display_);
    }
    wl_event_source_remove(wakes);
}

void ScriptedCompositor::run(const std::function<void()> &script) {
    std::promise<void> done;
    {
        const std::lock_guard lock(mutex_);
        script_ = [&] {
            script();
            wl_display_flush_clients(display_);
            done.set_value();
        };
    }
    eventfd_write(wake_, 1);
    done.get_future().wait();
}

wl_resource *ScriptedCompositor::announce(const QList<QByteArray> &types) {
    wl_resource *const offer =
        wl_resource_create(wl_resource_get_client(device), current_.offer, 1, 0);
    wl_resource_set_implementation(offer, &Requests::offerRequests, this, Requests::offerGone);
    offers.append(offer);
    wl_resource_post_event(device, dataOffer, offer);
    for (const QByteArray &each : types)
        addType(offer, each);
    return offer;
}

void ScriptedCompositor::addType(wl_resource *offer, const QByteArray &type) {
    wl_resource_post_event(offer, offered, type.constData());
}

void ScriptedCompositor::select(wl_resource *offer) {
    wl_resource_post_event(device, selection, offer);
}

void ScriptedCompositor::selectPrimary(wl_resource *offer) {
    wl_resource_post_event(device, primarySelection, offer);
}

void ScriptedCompositor::finish() {
    wl_resource_post_event(device, finished);
}

void ScriptedCompositor::ask(wl_resource *source, const QByteArray &type, int pipe) {
    wl_resource_post_event(source, send, type.constData(), pipe);
}

void ScriptedCompositor::cancel(wl_resource *source) {
    wl_resource_post_event(source, cancelled);
}

void ScriptedCompositor::withdrawSeat() {
    wl_global_destroy(std::exchange(seat_, nullptr));
}

void ScriptedCompositor::announceSeat() {
    seat_ = wl_global_create(display_, &wl_seat_interface, 5, this, Requests::bindSeat);
}

} // namespace quillmender::wayland
