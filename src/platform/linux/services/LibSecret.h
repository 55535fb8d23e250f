#pragma once

// libsecret's headers use a name that Qt defines as a macro.
#pragma push_macro("signals")
#undef signals
#include <libsecret/secret.h>
#pragma pop_macro("signals")

#include <QString>

namespace quillmender {

/// libsecret's functions, and those of GLib's object system that go with them, from a library that
/// is loaded when it is first asked for: most days no key is wanted, and what it brings with it is
/// a good part of what an idle program takes.
class LibSecret {
  public:
    /// The library of that name and its major version, for as long as the program runs.
    explicit LibSecret(const QString &name);

    /// Why it cannot be used; empty when it can. Nothing else may be called then.
    QString problem() const { return problem_; }

    decltype(&g_object_unref) objectUnref = nullptr;
    decltype(&g_cancellable_new) cancellableNew = nullptr;
    decltype(&g_cancellable_cancel) cancellableCancel = nullptr;
    decltype(&g_io_error_quark) ioErrorQuark = nullptr;
    decltype(&g_dbus_error_quark) dbusErrorQuark = nullptr;
    decltype(&secret_attributes_build) attributesBuild = nullptr;
    decltype(&secret_service_disconnect) serviceDisconnect = nullptr;
    decltype(&secret_password_searchv_sync) passwordSearch = nullptr;
    decltype(&secret_password_clearv_sync) passwordClear = nullptr;
    decltype(&secret_password_storev_binary_sync) passwordStore = nullptr;
    decltype(&secret_retrievable_retrieve_secret_sync) retrieveSecret = nullptr;
    decltype(&secret_value_new) valueNew = nullptr;
    decltype(&secret_value_get) valueGet = nullptr;
    decltype(&secret_value_unref) valueUnref = nullptr;

  private:
    QString problem_;
};

} // namespace quillmender
