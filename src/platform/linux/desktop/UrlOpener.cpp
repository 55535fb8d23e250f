#include "platform/linux/desktop/UrlOpener.h"

#include "platform/linux/desktop/DetachedProgram.h"

#include <QStandardPaths>

namespace quillmender {

bool openUrlOnDesktop(const QUrl &url) {
    if (!url.isValid() || url.scheme().isEmpty())
        return false;
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (opener.isEmpty())
        return false;
    return startDetached({opener, url.toString(QUrl::FullyEncoded)});
}

} // namespace quillmender
