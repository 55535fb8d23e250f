#include "platform/linux/wayland/kwin/FakeInput.h"

#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/kwin/HeldModifiers.h"

#include <QPointer>

#include <utility>

namespace quillmender::kwin {

using namespace std::chrono_literals;

namespace {

constexpr quint32 lowestVersion = 4; // before, it has no keys
constexpr quint32 highestVersion = 5;
constexpr std::chrono::milliseconds arrivalLimit = 1s;

wayland::TypedOutcome withheld(const QString &reason) {
    return {false, false, reason};
}

wayland::TypedOutcome unavailable(const QString &reason) {
    return {false, true, reason};
}

} // namespace

std::unique_ptr<FakeInput> FakeInput::create(wayland::WaylandConnection &connection,
                                             HeldModifiers *modifiers, FindCodes findCodes) {
    if (connection.offeredVersion(org_kde_kwin_fake_input_interface) < lowestVersion)
        return nullptr;
    return std::unique_ptr<FakeInput>(new FakeInput(connection, modifiers, std::move(findCodes)));
}

FakeInput::FakeInput(wayland::WaylandConnection &connection, HeldModifiers *modifiers,
                     FindCodes findCodes)
    : connection_(connection),
      modifiers_(modifiers),
      findCodes_(std::move(findCodes)),
      input_(connection.bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface,
                                                      highestVersion)) {
    org_kde_kwin_fake_input_authenticate(input_.get(), "Quillmender", "Copy and paste for you");
}

QCoro::Task<wayland::TypedOutcome> FakeInput::type(wayland::TypedKeys keys,
                                                   std::function<bool()> isStillMeant,
                                                   std::function<void()> beforeLast) {
    if (!modifiers_)
        co_return unavailable(QStringLiteral("nobody tells whether the user holds modifiers"));
    const QPointer self(this);
    const ChordCodes codes = co_await findCodes_(keys);
    if (!self)
        co_return unavailable(QStringLiteral("the program ends"));
    // Last, so that the user has no time to press one of them again.
    const std::optional<QString> held = co_await modifiers_->waitUntilUp();
    if (!self)
        co_return unavailable(QStringLiteral("the program ends"));
    if (connection_.isLost())
        co_return unavailable(QStringLiteral("the compositor is gone"));
    if (held)
        co_return withheld(*held);
    if (!isStillMeant())
        co_return withheld(QStringLiteral("it is not meant any more"));
    beforeLast();
    press(codes);
    // They arrive in the order in which they were sent, and nothing can take them back: a
    // compositor that is late types them all the same.
    co_await connection_.roundTrip(arrivalLimit);
    co_return wayland::TypedOutcome{true, false, {}};
}

void FakeInput::press(const ChordCodes &codes) {
    constexpr quint32 down = WL_KEYBOARD_KEY_STATE_PRESSED;
    constexpr quint32 up = WL_KEYBOARD_KEY_STATE_RELEASED;
    org_kde_kwin_fake_input_keyboard_key(input_.get(), codes.modifier, down);
    org_kde_kwin_fake_input_keyboard_key(input_.get(), codes.key, down);
    org_kde_kwin_fake_input_keyboard_key(input_.get(), codes.key, up);
    org_kde_kwin_fake_input_keyboard_key(input_.get(), codes.modifier, up);
    connection_.flush();
}

} // namespace quillmender::kwin
