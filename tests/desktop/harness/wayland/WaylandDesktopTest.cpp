#include "desktop/harness/wayland/WaylandDesktopTest.h"

namespace quillmender::harness {

WaylandDesktop &WaylandDesktopTest::startDesktop(WaylandDesktop::Options options) {
    desktop_.reset();
    options.kind = kind();
    desktop_ = std::make_unique<WaylandDesktop>(options);
    return *desktop_;
}

WaylandDesktop &WaylandDesktopTest::desktop() {
    return desktop_ ? *desktop_ : startDesktop({});
}

void WaylandDesktopTest::SetUp() {
    AnyDesktopTest::SetUp();
    const QStringList missing = Compositor::missingPrograms(kind());
    if (!missing.isEmpty()) {
        GTEST_SKIP() << "not installed: " << missing.join(QStringLiteral(", ")).toStdString()
                     << "; scripts/install-dependencies wayland";
    }
}

} // namespace quillmender::harness
