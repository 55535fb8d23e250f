#include "platform/linux/wayland/clipboard/DataOffer.h"

#include <algorithm>
#include <array>
#include <fcntl.h>

namespace quillmender::wayland {

namespace {

/// Names from X11, which come with the selections of its programs.
constexpr std::array noData{"TIMESTAMP", "MULTIPLE",         "TARGETS",        "SAVE_TARGETS",
                            "DELETE",    "INSERT_SELECTION", "INSERT_PROPERTY"};
constexpr qsizetype mostTypes = 1000;

} // namespace

DataOffer::DataOffer(zwlr_data_control_offer_v1 *offer) : offer_(offer) {
    static constexpr zwlr_data_control_offer_v1_listener listener{
        [](void *self, zwlr_data_control_offer_v1 *, const char *type) {
            static_cast<DataOffer *>(self)->add(type);
        }};
    zwlr_data_control_offer_v1_add_listener(offer, &listener, this);
}

void DataOffer::add(const QByteArray &type) {
    const bool isData = !type.isEmpty() && std::ranges::find(noData, type) == noData.end();
    if (isData && types_.size() < mostTypes && !types_.contains(type))
        types_.append(type);
}

Descriptor DataOffer::receive(const QByteArray &type) const {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return Descriptor();
    Descriptor reading(ends[0]);
    const Descriptor writing(ends[1]);
    // Only ours: the owner may not expect the other end to be like that.
    ::fcntl(reading.get(), F_SETFL, O_NONBLOCK);
    receiveInto(type, writing);
    return reading;
}

void DataOffer::receiveInto(const QByteArray &type, const Descriptor &into) const {
    zwlr_data_control_offer_v1_receive(offer_.get(), type.constData(), into.get());
}

} // namespace quillmender::wayland
