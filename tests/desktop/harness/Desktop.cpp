#include "desktop/harness/Desktop.h"

#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/ClipboardProbe.h"
#include "desktop/harness/Screenshot.h"

namespace quillmender::harness {

namespace {

constexpr int dotsPerInchAtScaleOne = 96;

// So that pictures show where a window ends.
void paintBackground(XcbConnection &connection) {
    constexpr quint32 slate = 0x5c6b7a;
    xcb_change_window_attributes(connection.get(), connection.root(), XCB_CW_BACK_PIXEL, &slate);
    xcb_clear_area(connection.get(), 0, connection.root(), 0, 0, 0, 0);
    connection.roundTrip();
}

} // namespace

Desktop::Desktop() : Desktop(Options{}) {}

Desktop::Desktop(const Options &options) : screen_(options.screen) {
    const int dotsPerInch = qRound(dotsPerInchAtScaleOne * options.scale);
    xServer_ = std::make_unique<XServer>(
        XServer::Options{.size = options.screen, .dotsPerInch = dotsPerInch}, environment(),
        folders().log(QStringLiteral("x-server")));
    setVariable("DISPLAY", xServer_->display());
    if (!qFuzzyCompare(options.scale, 1))
        setVariable("QT_SCALE_FACTOR", QString::number(options.scale));
    connection_ = std::make_unique<XcbConnection>(display());
    paintBackground(*connection_);
    windows_ = std::make_unique<Windows>(*connection_);
    input_ = std::make_unique<InputDriver>(*connection_);
    startSessionBus(options.services);
    if (options.windowManager) {
        windowManager_ = std::make_unique<WindowManager>(
            *connection_, environment(), folders().log(QStringLiteral("window-manager")),
            options.windowManagerCommand);
    }
    if (options.accessibilityBus) {
        startAccessibilityBus(options.accessibilityEnabled);
        // Qt takes the address from here without asking whether accessibility is on.
        if (!options.accessibilityEnabled) {
            xcb_delete_property(connection_->get(), connection_->root(),
                                connection_->atom("AT_SPI_BUS"));
            connection_->roundTrip();
        }
    }
    if (options.keyring)
        startKeyring();
}

Desktop::~Desktop() {
    endServices();
    windowManager_.reset();
    endSessionBus();
}

std::unique_ptr<SelectionOwner> Desktop::ownClipboard(const QList<ClipboardRepresentation> &offer) {
    return std::make_unique<ClipboardOwner>(display(), offer);
}

std::unique_ptr<SelectionOwner> Desktop::ownSelectedText(const QString &text) {
    return std::make_unique<ClipboardOwner>(display(), ClipboardOwner::plainText(text), "PRIMARY");
}

ClipboardContents Desktop::readClipboard() {
    return ClipboardProbe(display()).read();
}

std::optional<QByteArray> Desktop::readClipboardText(std::chrono::milliseconds deadline) {
    const auto found = ClipboardProbe(display()).readTarget("UTF8_STRING", deadline);
    return found ? std::optional(found->bytes) : std::nullopt;
}

QString Desktop::selectedText() {
    ClipboardProbe primary(display(), "PRIMARY");
    return primary.owner() == XCB_WINDOW_NONE ? QString() : primary.text();
}

QImage Desktop::screenshot() {
    return takeScreenshot(*connection_);
}

} // namespace quillmender::harness
