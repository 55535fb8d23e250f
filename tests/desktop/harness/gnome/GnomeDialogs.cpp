#include "desktop/harness/gnome/GnomeDialogs.h"

#include "desktop/harness/HarnessError.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>

#include <algorithm>

namespace quillmender::harness {

namespace {

const auto ofKeys = QStringLiteral("org.gnome.Settings.GlobalShortcutsProvider");
const auto ofPortal = QStringLiteral("org.freedesktop.impl.portal.desktop.gnome");

} // namespace

bool GnomeDialogs::asksForKeys() const {
    return !controls(ofKeys, QStringLiteral("Add")).isEmpty();
}

void GnomeDialogs::acceptKeys() const {
    answer(&GnomeDialogs::asksForKeys, ofKeys, QStringLiteral("Add"));
}

void GnomeDialogs::refuseKeys() const {
    answer(&GnomeDialogs::asksForKeys, ofKeys, QStringLiteral("Cancel"));
}

bool GnomeDialogs::asksForRemoteDesktop() const {
    return !controls(ofPortal, QStringLiteral("Share")).isEmpty();
}

void GnomeDialogs::acceptRemoteDesktop() const {
    use(ofPortal, QStringLiteral("Allow Remote Interaction"));
    const QString remember = QStringLiteral("_Remember This Selection");
    for (const Accessible &box : controls(ofPortal, remember)) {
        if (!box.hasState(AccessibleState::checked))
            use(ofPortal, remember);
    }
    answer(&GnomeDialogs::asksForRemoteDesktop, ofPortal, QStringLiteral("Share"));
}

void GnomeDialogs::refuseRemoteDesktop() const {
    answer(&GnomeDialogs::asksForRemoteDesktop, ofPortal, QStringLiteral("Cancel"));
}

qint64 GnomeDialogs::processOf(const QString &busName) const {
    const QDBusReply<uint> process = sessionBus_.connection().interface()->servicePid(busName);
    return process.isValid() ? process.value() : 0;
}

QList<Accessible> GnomeDialogs::controls(const QString &busName, const QString &name) const {
    const qint64 process = processOf(busName);
    if (process == 0)
        return {};
    return accessible_.findAll(process, [&](const Accessible &node) {
        // Labels have actions, too, such as to copy them.
        return node.name() == name && node.roleName() != QStringLiteral("label") &&
               node.hasState(AccessibleState::showing);
    });
}

void GnomeDialogs::use(const QString &busName, const QString &name) const {
    // A row is named like the switch in it, and does nothing.
    const auto isUsed = [&] {
        const QList<Accessible> found = controls(busName, name);
        return std::any_of(found.cbegin(), found.cend(), [](const Accessible &each) {
            return each.hasState(AccessibleState::sensitive) && each.doAction();
        });
    };
    if (!becomesTrue(isUsed)) {
        throw HarnessError(QStringLiteral("\"%1\" cannot be used among:\n%2")
                               .arg(name, accessible_.tree(processOf(busName))));
    }
}

void GnomeDialogs::answer(Question question, const QString &busName, const QString &button) const {
    waitUntil([&] { return (this->*question)(); }, QStringLiteral("the user is asked"));
    use(busName, button);
    waitUntil([&] { return !(this->*question)(); }, QStringLiteral("the question is gone"));
}

} // namespace quillmender::harness
