#include "applications/Surroundings.h"

#include "desktop/harness/Desktop.h"
#include "desktop/harness/wayland/WaylandDesktop.h"

namespace quillmender::applications {

namespace {

harness::CompositorKind compositorOf(Surroundings surroundings) {
    return surroundings == Surroundings::kwin ? harness::CompositorKind::kwin
                                              : harness::CompositorKind::sway;
}

} // namespace

std::optional<Surroundings> surroundingsNamed(const QString &name) {
    if (name == QStringLiteral("x11"))
        return Surroundings::x11;
    if (name == QStringLiteral("sway"))
        return Surroundings::sway;
    if (name == QStringLiteral("kwin"))
        return Surroundings::kwin;
    return std::nullopt;
}

QString describe(Surroundings surroundings) {
    switch (surroundings) {
    case Surroundings::x11:
        break;
    case Surroundings::sway:
        return QStringLiteral("Wayland, sway");
    case Surroundings::kwin:
        return QStringLiteral("Wayland, KWin of Plasma 6");
    }
    return QStringLiteral("X11, openbox");
}

QStringList missingPrograms(Surroundings surroundings) {
    if (surroundings == Surroundings::x11)
        return {};
    return harness::Compositor::missingPrograms(compositorOf(surroundings));
}

std::unique_ptr<harness::AnyDesktop> startDesktop(Surroundings surroundings, bool needsX) {
    if (surroundings == Surroundings::x11)
        return std::make_unique<harness::Desktop>();
    harness::WaylandDesktop::Options options;
    options.kind = compositorOf(surroundings);
    options.compositor.xwayland = needsX;
    return std::make_unique<harness::WaylandDesktop>(options);
}

} // namespace quillmender::applications
