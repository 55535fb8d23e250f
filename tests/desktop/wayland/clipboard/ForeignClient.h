#pragma once

#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/clipboard/DataControl.h"
#include "platform/linux/wayland/clipboard/DataControlProxies.h"
#include "platform/linux/wayland/clipboard/Descriptor.h"

#include <QHash>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace quillmender::wayland {

/// Another application, on a connection of its own: it offers and reads a selection.
class ForeignClient : public QObject {
    Q_OBJECT

  public:
    explicit ForeignClient(const QByteArray &display, Selection selection = Selection::clipboard);
    ~ForeignClient() override;

    using Answer = std::function<void(Descriptor pipe)>;

    /// Declares a type for the next time that it owns the selection.
    void declare(const QByteArray &type, const QByteArray &data);
    void declareSpecially(const QByteArray &type, Answer answer);

    /// Takes the selection with what has been declared since the last time. The compositor has
    /// heard of it then, and nobody in this process has.
    void own();

    /// Declares and owns one type.
    void offer(const QByteArray &type, const QByteArray &data);

    /// Leaves the selection empty.
    void clear();

    /// Ends the connection as a crash does.
    void die();

    bool isOwner() const { return source_ != nullptr; }

    /// The types that it was asked for as owner, one after the other.
    const QList<QByteArray> &asked() const { return asked_; }

    /// The types on offer, also those of its own.
    QList<QByteArray> types();

    /// How often the selection has changed since it came.
    int changes() const { return changes_; }

    /// What is handed over for the type, when there is anything on offer.
    std::optional<QByteArray> fetch(const QByteArray &type);

    /// Asks for a type. What comes of it can be read from the blocking pipe.
    Descriptor ask(const QByteArray &type);

    /// Until the compositor has heard of everything.
    void settle();

    /// The same while nothing else in this process comes to its turn.
    void settleAlone();

  private:
    struct Events;

    struct Type {
        QByteArray name;
        Answer answer;
    };

    Selection selection_;
    std::unique_ptr<WaylandConnection> connection_;
    Proxy<zwlr_data_control_manager_v1> manager_;
    Proxy<zwlr_data_control_device_v1> device_;
    Proxy<zwlr_data_control_source_v1> source_;
    QList<Type> declared_;
    QList<Type> owned_;
    QList<QByteArray> asked_;
    zwlr_data_control_offer_v1 *offer_ = nullptr;
    QHash<zwlr_data_control_offer_v1 *, QList<QByteArray>> offers_;
    int changes_ = 0;
};

/// A connection to a compositor that may just have started on a busy machine; null when it does not
/// come to it.
std::unique_ptr<WaylandConnection> openPatiently(const QByteArray &display);

/// Writes all of it from a thread of its own, and closes the pipe.
void writeInBackground(Descriptor pipe, QByteArray data);

/// Reads to the end from a thread of its own, while the event loop runs.
QByteArray readToEnd(Descriptor pipe);

/// Bytes that tell when one of them is lost or doubled.
QByteArray pattern(qsizetype size);

} // namespace quillmender::wayland
