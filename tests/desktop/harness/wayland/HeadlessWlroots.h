#pragma once

#include <QMap>
#include <QString>

namespace quillmender::harness {

/// What makes a compositor that is built on wlroots do without a screen, a graphics card and input
/// devices.
inline QMap<QString, QString> headlessWlroots() {
    return {{QStringLiteral("WLR_BACKENDS"), QStringLiteral("headless")},
            {QStringLiteral("WLR_RENDERER"), QStringLiteral("pixman")},
            {QStringLiteral("WLR_LIBINPUT_NO_DEVICES"), QStringLiteral("1")},
            {QStringLiteral("WLR_HEADLESS_OUTPUTS"), QStringLiteral("1")}};
}

} // namespace quillmender::harness
