#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"

#include <QObject>

#include <functional>
#include <map>

namespace quillmender::x11 {

/// A selection owner on a connection of its own that answers exactly as the test wants.
class ScriptedOwner : public QObject {
  public:
    /// Owns the selection at once.
    ScriptedOwner(const QByteArray &display, const char *selection = "CLIPBOARD");

    X11Connection &connection() { return *connection_; }
    xcb_atom_t atom(const char *name) { return connection_->atom(name); }

    /// Answered from now on; TARGETS lists them in this order.
    void offer(const char *target, const X11Property &property);
    void offerIncrementally(const char *target, const X11Property &property, qsizetype chunk);
    /// Listed, with whatever the test does when it is asked for.
    void offerSpecially(const char *target,
                        std::function<void(const xcb_selection_request_event_t &)> action);

    void answer(const xcb_selection_request_event_t &request, const X11Property &property);
    void notify(const xcb_selection_request_event_t &request, xcb_atom_t property);
    void own();

    /// Closes the connection as a program that dies would.
    void die();
    bool isDead() const { return !connection_; }

    /// How TARGETS is answered, where not honestly.
    std::optional<X11Property> targetsAnswer;
    bool isSilent = false;
    int requests = 0;

  private:
    struct Incremental {
        X11Property property;
        qsizetype chunk;
        qsizetype sent = 0;
    };

    void handleEvent(const xcb_generic_event_t *event);
    void handleRequest(const xcb_selection_request_event_t &request);
    void beginIncremental(const xcb_selection_request_event_t &request, const X11Property &property,
                          qsizetype chunk);
    void continueIncremental(xcb_window_t requestor, xcb_atom_t property);

    std::unique_ptr<X11Connection> connection_;
    xcb_atom_t selection_;
    QList<xcb_atom_t> order_;
    std::map<xcb_atom_t, std::function<void(const xcb_selection_request_event_t &)>> actions_;
    std::map<std::pair<xcb_window_t, xcb_atom_t>, Incremental> transfers_;
};

} // namespace quillmender::x11
