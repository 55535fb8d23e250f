#pragma once

#include "platform/linux/wayland/clipboard/DataControlProxies.h"
#include "platform/linux/wayland/clipboard/Descriptor.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace quillmender::wayland {

/// What another client offers as a selection.
class DataOffer {
  public:
    explicit DataOffer(zwlr_data_control_offer_v1 *offer);
    DataOffer(const DataOffer &) = delete;
    DataOffer &operator=(const DataOffer &) = delete;

    bool is(const zwlr_data_control_offer_v1 *offer) const { return offer_.get() == offer; }

    /// The types of data, in the order in which they were declared, each once. What asks an owner
    /// to do something, or describes the selection itself, is none.
    const QList<QByteArray> &types() const { return types_; }

    /// Asks for one type. Answers the end of a pipe that never blocks, out of which it comes; a
    /// closed one when the process has no more files.
    Descriptor receive(const QByteArray &type) const;

    /// The same into something of the caller's, whose other end it reads.
    void receiveInto(const QByteArray &type, const Descriptor &into) const;

  private:
    void add(const QByteArray &type);

    Proxy<zwlr_data_control_offer_v1> offer_;
    QList<QByteArray> types_;
};

} // namespace quillmender::wayland
