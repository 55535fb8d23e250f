#include "platform/linux/wayland/wlroots/OutputNames.h"

#include <algorithm>
#include <cstring>

namespace quillmender::wlroots {

struct OutputNames::Events {
    static void announced(void *self, wl_registry *registry, uint32_t number, const char *interface,
                          uint32_t version) {
        if (std::strcmp(interface, wl_output_interface.name) != 0)
            return;
        constexpr uint32_t highest = 4; // the first with names
        Output &output = static_cast<OutputNames *>(self)->outputs_[number];
        output.proxy.reset(static_cast<wl_output *>(
            wl_registry_bind(registry, number, &wl_output_interface, std::min(version, highest))));
        wl_output_add_listener(output.proxy.get(), &listener, &output);
    }
    static void withdrawn(void *self, wl_registry *, uint32_t number) {
        static_cast<OutputNames *>(self)->outputs_.erase(number);
    }
    static void named(void *output, wl_output *, const char *name) {
        static_cast<Output *>(output)->name = QString::fromUtf8(name);
    }
    static void placed(void *, wl_output *, int32_t, int32_t, int32_t, int32_t, int32_t,
                       const char *, const char *, int32_t) {}
    static void sized(void *, wl_output *, uint32_t, int32_t, int32_t, int32_t) {}
    static void told(void *, wl_output *) {}
    static void scaled(void *, wl_output *, int32_t) {}
    static void described(void *, wl_output *, const char *) {}

    static constexpr wl_registry_listener globals{announced, withdrawn};
    static constexpr wl_output_listener listener{placed, sized, told, scaled, named, described};
};

OutputNames::OutputNames(wl_display *display) : registry_(wl_display_get_registry(display)) {
    wl_registry_add_listener(registry_.get(), &Events::globals, this);
}

OutputNames::~OutputNames() = default;

QString OutputNames::of(wl_output *output) const {
    const auto found = std::ranges::find_if(
        outputs_, [&](const auto &entry) { return entry.second.proxy.get() == output; });
    return found == outputs_.end() ? QString() : found->second.name;
}

} // namespace quillmender::wlroots
