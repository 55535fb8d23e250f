#pragma once

#include "desktop/harness/ClipboardContents.h"
#include "desktop/harness/SelectionOwner.h"

#include <QHash>
#include <QString>

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <thread>

namespace quillmender::harness {

class XcbConnection;

/// An application that has put something on an X selection and serves it, on a connection and a
/// thread of its own. What is larger than one property goes over in increments.
class ClipboardOwner : public SelectionOwner {
  public:
    /// Owns the selection when constructed.
    ClipboardOwner(const QString &display, QList<ClipboardRepresentation> offer,
                   QByteArray selection = "CLIPBOARD");
    ClipboardOwner(const ClipboardOwner &) = delete;
    ClipboardOwner &operator=(const ClipboardOwner &) = delete;
    ~ClipboardOwner() override;

    /// A text, the same in HTML, and a PNG image, as a word processor offers them together.
    static QList<ClipboardRepresentation> textHtmlAndImage();
    /// UTF8_STRING, text/plain;charset=utf-8 and STRING.
    static QList<ClipboardRepresentation> plainText(const QString &text);

    xcb_window_t window() const { return window_; }

    bool ownsSelection() const override { return owns_; }

    /// When it is asked for this target next it stands still before it answers, and so does
    /// everything else that it is asked for.
    void standStillAt(const QByteArray &target, std::chrono::milliseconds duration);

    QList<QByteArray> requests() const override;

  private:
    struct Increment {
        xcb_window_t requestor;
        xcb_atom_t property;
        xcb_atom_t type;
        int format;
        QByteArray rest;
    };

    void run();
    void standStill(xcb_atom_t target);
    void handle(const xcb_generic_event_t &event);
    void serve(const xcb_selection_request_event_t &request);
    bool put(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t target);
    void putTargets(xcb_window_t requestor, xcb_atom_t property);
    bool putMultiple(xcb_window_t requestor, xcb_atom_t property);
    void continueIncrement(const xcb_property_notify_event_t &event);
    xcb_timestamp_t serverTime();

    std::unique_ptr<XcbConnection> connection_;
    QList<ClipboardRepresentation> offer_;
    xcb_window_t window_;
    xcb_timestamp_t since_ = XCB_CURRENT_TIME;
    qsizetype largestProperty_;
    QList<Increment> increments_;
    std::atomic<bool> owns_ = false;
    mutable std::mutex requestsMutex_;
    QList<QByteArray> requests_;
    QHash<QByteArray, std::chrono::milliseconds> stalls_;
    int stopEvent_;
    std::thread thread_;
};

} // namespace quillmender::harness
