#include "platform/linux/wayland/kwin/ModifierStates.h"

#include "platform/linux/wayland/WaylandConnection.h"

#include <QStringList>

#include <algorithm>

namespace quillmender::kwin {

namespace {

struct Modifier {
    quint32 key;
    const char *name;
};

// Caps Lock and Num Lock do not matter to a shortcut.
constexpr std::array modifiers{Modifier{ORG_KDE_KWIN_KEYSTATE_KEY_CONTROL, "Control"},
                               Modifier{ORG_KDE_KWIN_KEYSTATE_KEY_ALT, "Alt"},
                               Modifier{ORG_KDE_KWIN_KEYSTATE_KEY_SHIFT, "Shift"},
                               Modifier{ORG_KDE_KWIN_KEYSTATE_KEY_META, "Meta"},
                               Modifier{ORG_KDE_KWIN_KEYSTATE_KEY_ALTGR, "AltGr"}};

constexpr quint32 version = 5;

} // namespace

struct ModifierStates::Events {
    static void stateChanged(void *self, org_kde_kwin_keystate *, uint32_t key, uint32_t state) {
        static_cast<ModifierStates *>(self)->note(key, state);
    }
    static constexpr org_kde_kwin_keystate_listener listener{stateChanged};
};

ModifierStates::ModifierStates(wayland::WaylandConnection &connection)
    : keystate_(connection.bind<org_kde_kwin_keystate>(org_kde_kwin_keystate_interface, version)) {
    if (!keystate_)
        return;
    org_kde_kwin_keystate_add_listener(keystate_.get(), &Events::listener, this);
    org_kde_kwin_keystate_fetchStates(keystate_.get());
    connection.flush();
}

void ModifierStates::note(quint32 key, quint32 state) {
    if (key >= states_.size())
        return;
    states_[key] = state == ORG_KDE_KWIN_KEYSTATE_STATE_UNLOCKED ? State::up : State::held;
    Q_EMIT changed();
}

bool ModifierStates::isComplete() const {
    return std::ranges::none_of(
        modifiers, [this](const Modifier &each) { return states_[each.key] == State::unknown; });
}

QString ModifierStates::held() const {
    QStringList names;
    for (const Modifier &each : modifiers)
        if (states_[each.key] == State::held)
            names.append(QLatin1String(each.name));
    return names.join(QStringLiteral(", "));
}

} // namespace quillmender::kwin
