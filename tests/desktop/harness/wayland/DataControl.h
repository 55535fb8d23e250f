#pragma once

#include "desktop/harness/wayland/WaylandClient.h"

#include <QByteArray>
#include <QList>

#include <vector>

struct zwlr_data_control_device_v1;
struct zwlr_data_control_manager_v1;
struct zwlr_data_control_offer_v1;

namespace quillmender::harness {

enum class SelectionKind { clipboard, primary };

/// The clipboards of a compositor as clipboard managers see them, without a window or the focus.
class DataControl {
  public:
    /// What somebody offers, as long as it is the newest.
    struct Offer {
        Held<zwlr_data_control_offer_v1> object;
        QList<QByteArray> types;
    };

    explicit DataControl(const QString &socketPath);

    WaylandClient &client() { return client_; }
    zwlr_data_control_manager_v1 *manager() const { return manager_.get(); }
    zwlr_data_control_device_v1 *device() const { return device_.get(); }

    /// Null when the clipboard is empty. Asks the compositor.
    const Offer *current(SelectionKind kind);

  private:
    struct Events;

    std::unique_ptr<Offer> take(zwlr_data_control_offer_v1 *object);

    WaylandClient client_;
    Held<zwlr_data_control_manager_v1> manager_;
    Held<zwlr_data_control_device_v1> device_;
    std::vector<std::unique_ptr<Offer>> announced_;
    std::unique_ptr<Offer> clipboard_;
    std::unique_ptr<Offer> primary_;
};

} // namespace quillmender::harness
