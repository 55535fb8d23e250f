#pragma once

#include "platform/linux/wayland/clipboard/DataOffer.h"

#include <QCoroTask>
#include <QObject>

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace quillmender::wayland {

class WaylandConnection;

enum class Selection { clipboard, primary };

/// The selections of the compositor's seat, read and set without the focus, by ext-data-control-v1
/// or else wlr-data-control-unstable-v1. It must end before the connection does, and after what
/// refers to it.
class DataControl : public QObject {
    Q_OBJECT

  public:
    /// Null when the compositor has neither protocol.
    static std::unique_ptr<DataControl> create(WaylandConnection &connection);
    ~DataControl() override;

    /// Whether selections can be read and set now: there is a seat, and the compositor answers.
    bool isUsable() const { return device_ != nullptr; }

    bool hasPrimary() const { return hasPrimary_; }

    /// What is offered, by whomever, this program included; null when nothing is.
    std::shared_ptr<DataOffer> offer(Selection selection) const;

    /// A source that is not set as a selection yet. Only while it is usable.
    Proxy<zwlr_data_control_source_v1> makeSource();

    /// Null leaves the selection empty. Only while it is usable, and each source once.
    void set(Selection selection, zwlr_data_control_source_v1 *source);

    /// Calls it once the compositor has taken note of everything said so far, and what it had to
    /// say to that has been heard; never when the context, or the connection, is gone by then.
    void afterRoundTrip(QObject *context, const std::function<void()> &call);

    /// Waits until what the compositor knows now is known here, for a quarter of a second at most.
    QCoro::Task<> catchUp(std::chrono::milliseconds limit = std::chrono::milliseconds(250));

  Q_SIGNALS:
    /// The compositor has said what is offered now.
    void offered(Selection selection);

    /// It is not usable any more, and nothing is offered.
    void ended();

  private:
    struct Events;

    DataControl(WaylandConnection &connection, Proxy<zwlr_data_control_manager_v1> manager,
                bool hasPrimary);
    void openDevice();
    void closeDevice();
    void announce(zwlr_data_control_offer_v1 *offer);
    void select(Selection selection, zwlr_data_control_offer_v1 *offer);

    WaylandConnection &connection_;
    Proxy<zwlr_data_control_manager_v1> manager_;
    bool hasPrimary_;
    Proxy<zwlr_data_control_device_v1> device_;
    /// Announced, and not yet said to be a selection.
    std::vector<std::shared_ptr<DataOffer>> announced_;
    std::array<std::shared_ptr<DataOffer>, 2> offers_;
};

} // namespace quillmender::wayland
