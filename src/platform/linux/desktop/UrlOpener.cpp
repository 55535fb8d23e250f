#include "platform/linux/desktop/UrlOpener.h"

#include "platform/linux/desktop/DetachedProgram.h"
#include "platform/linux/desktop/SettingsPages.h"

#include <QStandardPaths>

namespace quillmender {

bool openUrlOnDesktop(const QUrl &url) {
    if (!url.isValid() || url.scheme().isEmpty())
        return false;
    if (url.scheme() == QStringLiteral("x-apple.systempreferences"))
        return settingsPages::open(SettingsPage::privacy);
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (opener.isEmpty())
        return false;
    return startDetached({opener, url.toString(QUrl::FullyEncoded)});
}

} // namespace quillmender
