#include "desktop/harness/wayland/DataControl.h"

#include "wlr-data-control-unstable-v1-client-protocol.h"

#include <algorithm>

namespace quillmender::harness {

struct DataControl::Events {
    using Device = zwlr_data_control_device_v1;
    using OfferObject = zwlr_data_control_offer_v1;

    static DataControl &of(void *self) { return *static_cast<DataControl *>(self); }

    static void announce(void *self, Device * /*device*/, OfferObject *object) {
        auto offer = std::make_unique<Offer>();
        offer->object.reset(object);
        zwlr_data_control_offer_v1_add_listener(object, &offerEvents, offer.get());
        of(self).announced_.push_back(std::move(offer));
    }
    static void setClipboard(void *self, Device * /*device*/, OfferObject *object) {
        of(self).clipboard_ = of(self).take(object);
    }
    static void setPrimary(void *self, Device * /*device*/, OfferObject *object) {
        of(self).primary_ = of(self).take(object);
    }
    static void finish(void * /*self*/, Device * /*device*/) {}
    static void addType(void *offer, OfferObject * /*object*/, const char *type) {
        static_cast<Offer *>(offer)->types.append(type);
    }

    static constexpr zwlr_data_control_device_v1_listener device{&announce, &setClipboard, &finish,
                                                                 &setPrimary};
    static constexpr zwlr_data_control_offer_v1_listener offerEvents{&addType};
};

DataControl::DataControl(const QString &socketPath)
    : client_(socketPath),
      manager_(
          client_.bind<zwlr_data_control_manager_v1>(zwlr_data_control_manager_v1_interface, 2)),
      device_(zwlr_data_control_manager_v1_get_data_device(manager_.get(), client_.seat())) {
    zwlr_data_control_device_v1_add_listener(device_.get(), &Events::device, this);
}

const DataControl::Offer *DataControl::current(SelectionKind kind) {
    client_.roundTrip();
    return kind == SelectionKind::clipboard ? clipboard_.get() : primary_.get();
}

std::unique_ptr<DataControl::Offer> DataControl::take(zwlr_data_control_offer_v1 *object) {
    const auto found = std::find_if(announced_.begin(), announced_.end(), [&](const auto &offer) {
        return offer->object.get() == object;
    });
    if (found == announced_.end())
        return nullptr;
    std::unique_ptr<Offer> offer = std::move(*found);
    announced_.erase(found);
    return offer;
}

} // namespace quillmender::harness
