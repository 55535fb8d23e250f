#include "desktop/harness/wayland/WaylandDesktop.h"

#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/wayland/WaylandClipboardOwner.h"
#include "desktop/harness/wayland/WaylandClipboardProbe.h"

namespace quillmender::harness {

WaylandDesktop::WaylandDesktop(const Options &options) {
    setVariable("XDG_SESSION_TYPE", QStringLiteral("wayland"));
    setVariable("GDK_BACKEND", QStringLiteral("wayland"));
    setVariable("QT_QPA_PLATFORM", QStringLiteral("wayland"));
    setVariable("MOZ_ENABLE_WAYLAND", QStringLiteral("1"));
    // There is none, and programs would wait for it.
    setVariable("GTK_USE_PORTAL", QStringLiteral("0"));
    startSessionBus(options.services);
    compositor_ = Compositor::start(
        options.kind, options.compositor,
        {.folders = folders(), .environment = environment(), .sessionBus = sessionBus()});
    const QMap<QString, QString> &variables = compositor_->variables();
    for (auto each = variables.cbegin(); each != variables.cend(); ++each)
        setVariable(each.key().toLatin1().constData(), each.value());
    tellServices();
    if (options.accessibilityBus)
        startAccessibilityBus(options.accessibilityEnabled);
    if (options.keyring)
        startKeyring();
}

WaylandDesktop::~WaylandDesktop() {
    endServices();
    compositor_.reset();
    endSessionBus();
}

std::unique_ptr<SelectionOwner>
WaylandDesktop::ownClipboard(const QList<ClipboardRepresentation> &offer) {
    return std::make_unique<WaylandClipboardOwner>(socketPath(), offer);
}

std::unique_ptr<SelectionOwner> WaylandDesktop::ownSelectedText(const QString &text) {
    return std::make_unique<WaylandClipboardOwner>(socketPath(), ClipboardOwner::plainText(text),
                                                   SelectionKind::primary);
}

ClipboardContents WaylandDesktop::readClipboard() {
    return WaylandClipboardProbe(socketPath()).read();
}

std::optional<QByteArray> WaylandDesktop::readClipboardText(std::chrono::milliseconds deadline) {
    return WaylandClipboardProbe(socketPath()).readText(deadline);
}

QString WaylandDesktop::selectedText() {
    return WaylandClipboardProbe(socketPath(), SelectionKind::primary).text();
}

void WaylandDesktop::prepareFor(const QString &program) {
    compositor_->trust(program, QStringLiteral(QUILLMENDER_DESKTOP_FILE));
}

} // namespace quillmender::harness
