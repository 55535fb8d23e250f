#include "platform/linux/wayland/own/KeyboardWatch.h"

#include <algorithm>
#include <cstring>

namespace quillmender::wayland {

namespace {
constexpr quint32 highestSeat = 5; // what came later says nothing more of keys
} // namespace

struct KeyboardWatch::Events {
    static void announced(void *self, wl_registry *, uint32_t name, const char *interface,
                          uint32_t version) {
        static_cast<KeyboardWatch *>(self)->announce(name, interface, version);
    }
    static void withdrawn(void *self, wl_registry *, uint32_t name) {
        auto &watch = *static_cast<KeyboardWatch *>(self);
        const auto found = watch.seats_.find(name);
        if (found == watch.seats_.end())
            return;
        if (watch.latest_ == found->second.get())
            watch.latest_ = nullptr;
        watch.seats_.erase(found);
    }
    static constexpr wl_registry_listener registry{announced, withdrawn};
};

KeyboardWatch::KeyboardWatch(wl_display *toolkitDisplay) : display_(toolkitDisplay) {
    if (!display_)
        return;
    registry_.reset(wl_display_get_registry(display_));
    wl_registry_add_listener(registry_.get(), &Events::registry, this);
}

KeyboardWatch::~KeyboardWatch() = default;

void KeyboardWatch::announce(quint32 name, const char *interface, quint32 version) {
    if (std::strcmp(interface, wl_seat_interface.name) != 0)
        return;
    Proxy<wl_seat> seat(static_cast<wl_seat *>(wl_registry_bind(
        registry_.get(), name, &wl_seat_interface, std::min(version, highestSeat))));
    auto keyboard = std::make_unique<SeatKeyboard>(display_, std::move(seat));
    const SeatKeyboard *const known = keyboard.get();
    connect(known, &SeatKeyboard::entered, this, [this, known] { latest_ = known; });
    connect(known, &SeatKeyboard::modifiersTold, this, &KeyboardWatch::modifiersTold);
    seats_[name] = std::move(keyboard);
}

QSet<quint32> KeyboardWatch::downAtEntry() const {
    return latest_ ? latest_->downAtEntry() : QSet<quint32>();
}

bool KeyboardWatch::isDown(quint32 code) const {
    return std::ranges::any_of(
        seats_, [code](const auto &seat) { return seat.second->down().contains(code); });
}

bool KeyboardWatch::isAny() const {
    return std::ranges::any_of(seats_, [](const auto &seat) { return seat.second->isThere(); });
}

bool KeyboardWatch::isAwaited() const {
    return std::ranges::any_of(seats_, [](const auto &seat) { return seat.second->isAwaited(); });
}

std::optional<quint32> KeyboardWatch::modifiers() const {
    return latest_ && latest_->isHere() ? latest_->modifiers() : std::nullopt;
}

std::optional<quint32> KeyboardWatch::modifiersAtDeparture(std::chrono::milliseconds ago) const {
    const bool isMeant = latest_ && !latest_->isHere() &&
                         std::chrono::steady_clock::now() - latest_->leftAt() <= ago;
    return isMeant ? latest_->modifiers() : std::nullopt;
}

bool KeyboardWatch::isHere() const {
    return std::ranges::any_of(seats_, [](const auto &seat) { return seat.second->isHere(); });
}

} // namespace quillmender::wayland
