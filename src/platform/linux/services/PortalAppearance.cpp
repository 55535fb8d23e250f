#include "platform/linux/services/PortalAppearance.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <cmath>

using SettingGroups = QMap<QString, QVariantMap>;

namespace quillmender {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
constexpr int deadlineMilliseconds = 5000;

ColorScheme schemeOf(const QVariant &value) {
    switch (value.toUInt()) {
    case 1:
        return ColorScheme::dark;
    case 2:
        return ColorScheme::light;
    default:
        return ColorScheme::noPreference;
    }
}

ContrastPreference contrastOf(const QVariant &value) {
    return value.toUInt() == 1 ? ContrastPreference::higher : ContrastPreference::noPreference;
}

// A desktop without an accent colour tells channels outside 0 to 1.
std::optional<QColor> accentOf(const QVariant &value) {
    if (!value.canConvert<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QStringLiteral("(ddd)"))
        return std::nullopt;
    double channels[3] = {};
    argument.beginStructure();
    argument >> channels[0] >> channels[1] >> channels[2];
    argument.endStructure();
    QRgb color = 0;
    for (const double channel : channels) {
        if (std::isnan(channel) || channel < 0 || channel > 1)
            return std::nullopt;
        color = color << 8 | QRgb(std::lround(channel * 255));
    }
    return QColor::fromRgb(color);
}

void apply(DesktopColors &colors, const QString &key, const QVariant &value) {
    if (key == QStringLiteral("color-scheme"))
        colors.scheme = schemeOf(value);
    else if (key == QStringLiteral("accent-color"))
        colors.accent = accentOf(value);
    else if (key == QStringLiteral("contrast"))
        colors.contrast = contrastOf(value);
}

} // namespace

PortalAppearance::PortalAppearance(QDBusConnection bus)
    : bus_(std::move(bus)),
      portal_(service, bus_, QDBusServiceWatcher::WatchForRegistration) {
    qDBusRegisterMetaType<SettingGroups>();
    if (!bus_.isConnected())
        return;
    bus_.connect(service, path, settingsInterface, QStringLiteral("SettingChanged"), this,
                 SLOT(settingChanged(QDBusMessage)));
    connect(&portal_, &QDBusServiceWatcher::serviceRegistered, this, &PortalAppearance::readAll);
    readAll();
}

void PortalAppearance::readAll() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, settingsInterface, QStringLiteral("ReadAll"));
    call << QStringList(appearanceGroup);
    auto *watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call, deadlineMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<SettingGroups> reply = *watcher;
        if (reply.isError())
            return;
        DesktopColors read;
        const QVariantMap settings = reply.value().value(appearanceGroup);
        for (auto setting = settings.cbegin(); setting != settings.cend(); ++setting)
            apply(read, setting.key(), setting.value());
        accept(read);
    });
}

void PortalAppearance::settingChanged(const QDBusMessage &signal) {
    const QVariantList arguments = signal.arguments();
    if (signal.signature() != QStringLiteral("ssv") || arguments[0].toString() != appearanceGroup)
        return;
    DesktopColors next = current_;
    apply(next, arguments[1].toString(), arguments[2].value<QDBusVariant>().variant());
    accept(next);
}

void PortalAppearance::accept(const DesktopColors &colors) {
    if (colors == current_)
        return;
    current_ = colors;
    if (listener_)
        listener_();
}

} // namespace quillmender
