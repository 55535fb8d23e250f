#pragma once

#include "desktop/harness/ClipboardContents.h"
#include "desktop/harness/SelectionOwner.h"
#include "desktop/harness/wayland/ClipboardSend.h"
#include "desktop/harness/wayland/DataControl.h"

#include <QHash>

#include <atomic>
#include <mutex>
#include <thread>

struct zwlr_data_control_source_v1;

namespace quillmender::harness {

/// An application that has put something on a clipboard of a compositor and serves it, on a
/// connection and a thread of its own. When it goes away, so does what it offered.
class WaylandClipboardOwner : public SelectionOwner {
  public:
    /// Owns the clipboard when constructed. Of the representations only target and bytes count.
    WaylandClipboardOwner(const QString &socketPath, QList<ClipboardRepresentation> offer,
                          SelectionKind kind = SelectionKind::clipboard);
    WaylandClipboardOwner(const WaylandClipboardOwner &) = delete;
    WaylandClipboardOwner &operator=(const WaylandClipboardOwner &) = delete;
    ~WaylandClipboardOwner() override;

    bool ownsSelection() const override { return owns_; }
    QList<QByteArray> requests() const override;

    /// From now on.
    void send(const QByteArray &type, SendManner manner);

    /// It dies when it is asked for this type next: its connection ends with half of it sent.
    void dieAt(const QByteArray &type);

    /// What it was asked for so far, in order, and how far that has come.
    QList<ClipboardSend> sends() const;

  private:
    struct Pipe {
        int descriptor;
        qsizetype index; ///< of sends_
        QByteArray bytes;
        SendManner manner;
    };
    struct Events;

    void run();
    void begin(const QByteArray &type, int descriptor);
    bool advance(Pipe &pipe);
    int pauseMs() const;
    QByteArray bytesOf(const QByteArray &type) const;

    QList<ClipboardRepresentation> offer_;
    DataControl control_;
    Held<zwlr_data_control_source_v1> source_;
    std::atomic<bool> owns_ = true;
    bool isDead_ = false;
    QList<Pipe> pipes_;
    mutable std::mutex mutex_;
    QList<ClipboardSend> sends_;
    QHash<QByteArray, SendManner> manners_;
    QByteArray deadly_;
    int stopEvent_;
    std::thread thread_;
};

} // namespace quillmender::harness
