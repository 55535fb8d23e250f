#pragma once

#include "platform/linux/wayland/clipboard/DataControlProxies.h"
#include "platform/linux/wayland/clipboard/Descriptor.h"
#include "platform/linux/wayland/clipboard/OfferedContents.h"
#include "platform/linux/wayland/clipboard/PipeWriter.h"

#include <QObject>

namespace quillmender::wayland {

class DataControl;

/// Contents that this program offers as a selection, byte for byte. Who has asked is served to the
/// end, whatever becomes of the offer meanwhile.
class DataSource : public QObject {
    Q_OBJECT

  public:
    DataSource(DataControl &control, OfferedContents contents);

    zwlr_data_control_source_v1 *proxy() const { return source_.get(); }
    const OfferedContents &contents() const { return contents_; }

    /// Answers otherwise from now on, of the same types.
    void exchange(OfferedContents contents) { contents_ = std::move(contents); }

    /// From now on whoever asks gets nothing: the pipe is closed without a byte.
    void refuse() { isRefusing_ = true; }

    /// Goes away as soon as the compositor knows of what took its place: whoever asked before that
    /// is still answered.
    void retire();

  Q_SIGNALS:
    /// Somebody asks, and is answered right after this.
    void beingAsked();

    /// Somebody, whom nobody can tell, has asked for a type that is there, and is being served.
    void asked(const QByteArray &type, PipeWriter *transfer);

    /// Another source has taken its place, or the selection is empty.
    void cancelled();

  private:
    struct Events;

    void send(const QByteArray &type, Descriptor pipe);

    DataControl &control_;
    OfferedContents contents_;
    bool isRefusing_ = false;
    Proxy<zwlr_data_control_source_v1> source_;
};

} // namespace quillmender::wayland
