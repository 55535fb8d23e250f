#include "platform/linux/wayland/clipboard/DataControl.h"

#include "platform/SignalWait.h"
#include "platform/linux/LaterPointer.h"
#include "platform/linux/wayland/RoundTrip.h"
#include "platform/linux/wayland/WaylandConnection.h"

#include <algorithm>

namespace quillmender::wayland {

using namespace std::chrono_literals;

struct DataControl::Events {
    using Device = zwlr_data_control_device_v1;
    using Offer = zwlr_data_control_offer_v1;

    static DataControl &of(void *self) { return *static_cast<DataControl *>(self); }
    static void announced(void *self, Device *, Offer *offer) { of(self).announce(offer); }
    static void clipboard(void *self, Device *, Offer *offer) {
        of(self).select(Selection::clipboard, offer);
    }
    static void primary(void *self, Device *, Offer *offer) {
        of(self).select(Selection::primary, offer);
    }
    static void finished(void *self, Device *) { of(self).closeDevice(); }
    static constexpr zwlr_data_control_device_v1_listener device{announced, clipboard, finished,
                                                                 primary};
};

std::unique_ptr<DataControl> DataControl::create(WaylandConnection &connection) {
    if (connection.isLost())
        return nullptr;
    constexpr quint32 highestExt = 1;
    constexpr quint32 highestWlr = ZWLR_DATA_CONTROL_DEVICE_V1_SET_PRIMARY_SELECTION_SINCE_VERSION;
    bool hasPrimary = true;
    Proxy<zwlr_data_control_manager_v1> manager = connection.bind<zwlr_data_control_manager_v1>(
        ext_data_control_manager_v1_interface, highestExt);
    if (!manager) {
        hasPrimary =
            connection.offeredVersion(zwlr_data_control_manager_v1_interface) >= highestWlr;
        manager = connection.bind<zwlr_data_control_manager_v1>(
            zwlr_data_control_manager_v1_interface, highestWlr);
    }
    if (!manager)
        return nullptr;
    return std::unique_ptr<DataControl>(
        new DataControl(connection, std::move(manager), hasPrimary));
}

DataControl::DataControl(WaylandConnection &connection, Proxy<zwlr_data_control_manager_v1> manager,
                         bool hasPrimary)
    : connection_(connection),
      manager_(std::move(manager)),
      hasPrimary_(hasPrimary) {
    connect(&connection_, &WaylandConnection::lost, this, &DataControl::closeDevice);
    connect(&connection_, &WaylandConnection::globalAnnounced, this,
            [this](const QByteArray &interface) {
                if (interface == wl_seat_interface.name)
                    openDevice();
            });
    connect(&connection_, &WaylandConnection::globalWithdrawn, this, [this] {
        if (!connection_.seat())
            closeDevice();
    });
    openDevice();
}

DataControl::~DataControl() {
    // Their objects still speak to the compositor when they end.
    while (!children().isEmpty())
        delete children().constFirst();
}

void DataControl::openDevice() {
    if (device_ || !connection_.seat())
        return;
    device_.reset(zwlr_data_control_manager_v1_get_data_device(manager_.get(), connection_.seat()));
    zwlr_data_control_device_v1_add_listener(device_.get(), &Events::device, this);
}

void DataControl::closeDevice() {
    if (!device_)
        return;
    device_.reset();
    announced_.clear();
    offers_ = {};
    Q_EMIT ended();
}

std::shared_ptr<DataOffer> DataControl::offer(Selection selection) const {
    return offers_[static_cast<size_t>(selection)];
}

void DataControl::announce(zwlr_data_control_offer_v1 *offer) {
    constexpr size_t most = 8;
    if (announced_.size() == most)
        announced_.erase(announced_.begin());
    announced_.push_back(std::make_shared<DataOffer>(offer));
}

void DataControl::select(Selection selection, zwlr_data_control_offer_v1 *offer) {
    std::shared_ptr<DataOffer> selected;
    const auto isIt = [offer](const auto &each) { return each && each->is(offer); };
    const auto announced = std::ranges::find_if(announced_, isIt);
    if (announced != announced_.end()) {
        selected = *announced;
        announced_.erase(announced);
    } else if (const auto known = std::ranges::find_if(offers_, isIt);
               offer && known != offers_.end()) {
        selected = *known; // said twice
    }
    offers_[static_cast<size_t>(selection)] = selected;
    Q_EMIT offered(selection);
}

Proxy<zwlr_data_control_source_v1> DataControl::makeSource() {
    return Proxy<zwlr_data_control_source_v1>(
        zwlr_data_control_manager_v1_create_data_source(manager_.get()));
}

void DataControl::set(Selection selection, zwlr_data_control_source_v1 *source) {
    if (selection == Selection::clipboard)
        zwlr_data_control_device_v1_set_selection(device_.get(), source);
    else if (hasPrimary_)
        zwlr_data_control_device_v1_set_primary_selection(device_.get(), source);
    connection_.flush();
}

void DataControl::afterRoundTrip(QObject *context, const std::function<void()> &call) {
    if (connection_.isLost())
        return;
    auto *const trip = new RoundTrip(connection_.display());
    trip->setParent(this);
    connect(trip, &RoundTrip::over, context, call);
    connect(trip, &RoundTrip::over, trip, &QObject::deleteLater);
    connection_.flush();
}

QCoro::Task<> DataControl::catchUp(std::chrono::milliseconds limit) {
    if (connection_.isLost())
        co_return;
    const LaterPointer<RoundTrip> trip(new RoundTrip(connection_.display()));
    trip->setParent(this);
    connection_.flush();
    co_await SignalWait(trip.get(), &RoundTrip::over, std::min(limit, 250ms));
}

} // namespace quillmender::wayland
