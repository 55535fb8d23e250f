#pragma once

#include <QString>
#include <QStringList>

namespace quillmender {

/// What an alert says and offers.
struct Alert {
    QString messageText;
    QString informativeText;
    QStringList buttons; ///< the first is the default one, the last is what closing means
};

} // namespace quillmender
