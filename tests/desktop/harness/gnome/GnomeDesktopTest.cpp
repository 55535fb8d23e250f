#include "desktop/harness/gnome/GnomeDesktopTest.h"

namespace quillmender::harness {

GnomeDesktop &GnomeDesktopTest::startDesktop(const GnomeDesktop::Options &options) {
    desktop_.reset();
    desktop_ = std::make_unique<GnomeDesktop>(options);
    return *desktop_;
}

GnomeDesktop &GnomeDesktopTest::desktop() {
    return desktop_ ? *desktop_ : startDesktop({});
}

void GnomeDesktopTest::SetUp() {
    AnyDesktopTest::SetUp();
    const QStringList missing = GnomeShell::missingPrograms();
    if (!missing.isEmpty()) {
        GTEST_SKIP() << "not installed: " << missing.join(QStringLiteral(", ")).toStdString()
                     << "; scripts/install-dependencies gnome";
    }
}

} // namespace quillmender::harness
