#include "desktop/harness/DesktopTest.h"

namespace quillmender::harness {

Desktop &DesktopTest::startDesktop(const Desktop::Options &options) {
    desktop_.reset();
    desktop_ = std::make_unique<Desktop>(options);
    return *desktop_;
}

Desktop &DesktopTest::desktop() {
    return desktop_ ? *desktop_ : startDesktop({});
}

} // namespace quillmender::harness
