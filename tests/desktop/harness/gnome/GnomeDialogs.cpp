#include "desktop/harness/gnome/GnomeDialogs.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>

namespace quillmender::harness {

namespace {

const auto ofKeys = QStringLiteral("org.gnome.Settings.GlobalShortcutsProvider");
const auto ofPortal = QStringLiteral("org.freedesktop.impl.portal.desktop.gnome");

} // namespace

std::optional<Accessible> GnomeDialogs::keys() const {
    return control(ofKeys, QStringLiteral("Add"));
}

void GnomeDialogs::acceptKeys() const {
    answer(&GnomeDialogs::keys, ofKeys, QStringLiteral("Add"));
}

void GnomeDialogs::refuseKeys() const {
    answer(&GnomeDialogs::keys, ofKeys, QStringLiteral("Cancel"));
}

std::optional<Accessible> GnomeDialogs::remoteDesktop() const {
    return control(ofPortal, QStringLiteral("Share"));
}

void GnomeDialogs::acceptRemoteDesktop(bool isRemembered) const {
    waitUntil([this] { return remoteDesktop().has_value(); },
              QStringLiteral("the user is asked for the remote desktop"));
    use(ofPortal, QStringLiteral("Allow Remote Interaction"));
    if (isRemembered)
        use(ofPortal, QStringLiteral("Remember This Selection"));
    answer(&GnomeDialogs::remoteDesktop, ofPortal, QStringLiteral("Share"));
}

void GnomeDialogs::refuseRemoteDesktop() const {
    answer(&GnomeDialogs::remoteDesktop, ofPortal, QStringLiteral("Cancel"));
}

QString GnomeDialogs::tree() const {
    return accessible_.tree(processOf(ofKeys)) + accessible_.tree(processOf(ofPortal));
}

qint64 GnomeDialogs::processOf(const QString &busName) const {
    const QDBusReply<uint> process = sessionBus_.connection().interface()->servicePid(busName);
    return process.isValid() ? process.value() : 0;
}

std::optional<Accessible> GnomeDialogs::control(const QString &busName, const QString &name) const {
    const qint64 process = processOf(busName);
    if (process == 0)
        return std::nullopt;
    return accessible_.find(process, [&](const Accessible &node) {
        // Labels have actions, too, such as to copy them.
        return node.name() == name && node.roleName() != QStringLiteral("label") &&
               node.hasState(AccessibleState::showing) &&
               node.interfaces().contains(QStringLiteral("org.a11y.atspi.Action"));
    });
}

void GnomeDialogs::use(const QString &busName, const QString &name) const {
    waitUntil(
        [&] {
            const auto found = control(busName, name);
            return found && found->hasState(AccessibleState::sensitive) && found->doAction();
        },
        QStringLiteral("\"%1\" can be used").arg(name));
}

void GnomeDialogs::answer(Question question, const QString &busName, const QString &button) const {
    waitUntil([&] { return (this->*question)().has_value(); }, QStringLiteral("the user is asked"));
    use(busName, button);
    waitUntil([&] { return !(this->*question)().has_value(); },
              QStringLiteral("the question is gone"));
}

} // namespace quillmender::harness
