#include "desktop/wayland/kwin/TestUser.h"

#include "desktop/harness/HarnessError.h"

namespace quillmender {

using namespace std::chrono_literals;

TestUser::TestUser() : connection_(wayland::WaylandConnection::open()) {
    if (connection_)
        input_ = connection_->bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, 4);
    if (!input_)
        throw harness::HarnessError(QStringLiteral("nobody can type here"));
    org_kde_kwin_fake_input_authenticate(input_.get(), "test", "test");
}

TestUser::~TestUser() {
    while (!down_.isEmpty())
        release(down_.constLast());
}

void TestUser::press(quint32 code) {
    down_.append(code);
    send(code, true);
}

void TestUser::release(quint32 code) {
    down_.removeAll(code);
    send(code, false);
}

void TestUser::tap(quint32 code) {
    press(code);
    release(code);
}

void TestUser::send(quint32 code, bool isDown) {
    org_kde_kwin_fake_input_keyboard_key(input_.get(), code, isDown ? 1 : 0);
    connection_->settle(10s);
}

} // namespace quillmender
