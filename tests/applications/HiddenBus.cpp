#include "applications/HiddenBus.h"

#include "desktop/harness/HarnessError.h"

namespace quillmender::applications {

namespace {

constexpr auto rootProperty = "AT_SPI_BUS";

} // namespace

HiddenBus::HiddenBus(harness::Desktop &desktop, harness::Command &command) : desktop_(desktop) {
    command.environment.insert(QStringLiteral("AT_SPI_BUS_ADDRESS"),
                               QStringLiteral("unix:path=/nonexistent"));
    desktop.accessibilityBus()->setEnabled(false);
    // Qt 5 looks here only, and heeds neither of the other two.
    harness::XcbConnection &server = desktop.connection();
    address_ = server.property(server.root(), rootProperty).value_or(QByteArray());
    xcb_delete_property(server.get(), server.root(), server.atom(rootProperty));
    server.roundTrip();
}

HiddenBus::~HiddenBus() {
    harness::XcbConnection &server = desktop_.connection();
    if (!address_.isEmpty()) {
        xcb_change_property(server.get(), XCB_PROP_MODE_REPLACE, server.root(),
                            server.atom(rootProperty), XCB_ATOM_STRING, 8,
                            static_cast<quint32>(address_.size()), address_.constData());
    }
    server.roundTrip();
    try {
        desktop_.accessibilityBus()->setEnabled(true);
    } catch (const harness::HarnessError &error) {
        qWarning("%s", error.what());
    }
}

} // namespace quillmender::applications
