#pragma once

#include "platform/linux/wayland/CoreProxies.h"
#include "platform/linux/wayland/wlroots/ForeignProxies.h"

#include <QString>

#include <map>

namespace quillmender::wlroots {

/// The names of the compositor's outputs. An object that names an output by itself is told of those
/// alone that have been bound.
class OutputNames {
  public:
    explicit OutputNames(wl_display *display);
    OutputNames(const OutputNames &) = delete;
    OutputNames &operator=(const OutputNames &) = delete;
    ~OutputNames();

    /// Empty when it is not known, as with a compositor that tells no names.
    QString of(wl_output *output) const;

  private:
    struct Events;
    struct Output {
        wayland::Proxy<wl_output> proxy;
        QString name;
    };

    wayland::Proxy<wl_registry> registry_;
    std::map<quint32, Output> outputs_; ///< by the number of the global; entries stay in place
};

} // namespace quillmender::wlroots
