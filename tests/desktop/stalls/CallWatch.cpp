#include "desktop/stalls/CallWatch.h"

#include "desktop/harness/HarnessError.h"

#include <utility>

// Headers of the bus library use a name that Qt defines as a macro. It is not Qt's own library,
// which would answer calls that it only watches.
#undef signals
#include <gio/gio.h>

namespace quillmender {

namespace {

QString propertyOf(GDBusMessage *call) {
    GVariant *const body = g_dbus_message_get_body(call);
    if (body == nullptr || !g_variant_is_of_type(body, G_VARIANT_TYPE("(ss)")))
        return {};
    const char *interface = nullptr;
    const char *name = nullptr;
    g_variant_get(body, "(&s&s)", &interface, &name);
    return QString::fromUtf8(name);
}

GDBusMessage *filter(GDBusConnection *, GDBusMessage *message, gboolean isIncoming, void *data) {
    if (!isIncoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
        return message;
    QString member = QString::fromUtf8(g_dbus_message_get_member(message));
    if (member == QStringLiteral("Get"))
        member += QStringLiteral(":") + propertyOf(message);
    const auto &observer = *static_cast<CallWatch::Observer *>(data);
    observer(QString::fromUtf8(g_dbus_message_get_destination(message)), member);
    g_object_unref(message);
    return nullptr;
}

void forgetObserver(void *data) {
    delete static_cast<CallWatch::Observer *>(data);
}

} // namespace

struct CallWatch::Connection {
    GDBusConnection *bus = nullptr;

    Connection() = default;
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;
    ~Connection() {
        if (bus == nullptr)
            return;
        g_dbus_connection_close_sync(bus, nullptr, nullptr);
        g_object_unref(bus);
    }
};

CallWatch::CallWatch(const QString &busAddress, Observer observer)
    : connection_(std::make_unique<Connection>()) {
    const auto flags = GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                            G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    connection_->bus = g_dbus_connection_new_for_address_sync(busAddress.toUtf8().constData(),
                                                              flags, nullptr, nullptr, nullptr);
    if (connection_->bus == nullptr)
        throw harness::HarnessError(QStringLiteral("no connection to %1").arg(busAddress));
    g_dbus_connection_add_filter(connection_->bus, &filter, new Observer(std::move(observer)),
                                 &forgetObserver);
    GVariantBuilder rules;
    g_variant_builder_init(&rules, G_VARIANT_TYPE("as"));
    g_variant_builder_add(&rules, "s", "type='method_call'");
    GVariant *const answer = g_dbus_connection_call_sync(
        connection_->bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
        "org.freedesktop.DBus.Monitoring", "BecomeMonitor", g_variant_new("(asu)", &rules, 0U),
        nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    if (answer == nullptr)
        throw harness::HarnessError(QStringLiteral("the bus lets nobody watch"));
    g_variant_unref(answer);
}

CallWatch::~CallWatch() = default;

} // namespace quillmender
