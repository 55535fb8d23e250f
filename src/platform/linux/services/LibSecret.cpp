#include "platform/linux/services/LibSecret.h"

#include <QLibrary>

namespace quillmender {

namespace {

constexpr int majorVersion = 0;

} // namespace

LibSecret::LibSecret(const QString &name) {
    // Nothing unloads it: its types are registered for good.
    QLibrary library(name, majorVersion);
    library.setLoadHints(QLibrary::PreventUnloadHint);
    const auto resolve = [&](auto &function, const char *symbol) {
        if (!problem_.isEmpty())
            return;
        using Function = std::remove_reference_t<decltype(function)>;
        function = reinterpret_cast<Function>(library.resolve(symbol));
        if (!function)
            problem_ = library.errorString();
    };
    resolve(objectUnref, "g_object_unref");
    resolve(cancellableNew, "g_cancellable_new");
    resolve(cancellableCancel, "g_cancellable_cancel");
    resolve(ioErrorQuark, "g_io_error_quark");
    resolve(dbusErrorQuark, "g_dbus_error_quark");
    resolve(attributesBuild, "secret_attributes_build");
    resolve(serviceDisconnect, "secret_service_disconnect");
    resolve(passwordSearch, "secret_password_searchv_sync");
    resolve(passwordClear, "secret_password_clearv_sync");
    resolve(passwordStore, "secret_password_storev_binary_sync");
    resolve(retrieveSecret, "secret_retrievable_retrieve_secret_sync");
    resolve(valueNew, "secret_value_new");
    resolve(valueGet, "secret_value_get");
    resolve(valueUnref, "secret_value_unref");
}

} // namespace quillmender
