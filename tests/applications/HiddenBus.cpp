#include "applications/HiddenBus.h"

#include "desktop/harness/HarnessError.h"

namespace quillmender::applications {

namespace {

constexpr auto rootProperty = "AT_SPI_BUS";

} // namespace

HiddenBus::HiddenBus(harness::AnyDesktop &desktop, harness::Command &command) : desktop_(desktop) {
    command.environment.insert(QStringLiteral("AT_SPI_BUS_ADDRESS"),
                               QStringLiteral("unix:path=/nonexistent"));
    desktop.accessibilityBus()->setEnabled(false);
    // Qt 5 looks here only, and heeds neither of the other two.
    const QString display = desktop.environment().value(QStringLiteral("DISPLAY"));
    if (display.isEmpty())
        return;
    server_ = std::make_unique<harness::XcbConnection>(display);
    address_ = server_->property(server_->root(), rootProperty).value_or(QByteArray());
    xcb_delete_property(server_->get(), server_->root(), server_->atom(rootProperty));
    server_->roundTrip();
}

HiddenBus::~HiddenBus() {
    if (!address_.isEmpty()) {
        xcb_change_property(server_->get(), XCB_PROP_MODE_REPLACE, server_->root(),
                            server_->atom(rootProperty), XCB_ATOM_STRING, 8,
                            static_cast<quint32>(address_.size()), address_.constData());
        server_->roundTrip();
    }
    try {
        desktop_.accessibilityBus()->setEnabled(true);
    } catch (const harness::HarnessError &error) {
        qWarning("%s", error.what());
    }
}

} // namespace quillmender::applications
