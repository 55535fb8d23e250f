#include "platform/linux/desktop/ProxyVariables.h"

#include <QByteArray>

namespace quillmender {

namespace {

constexpr const char *variables[] = {"http_proxy", "https_proxy", "all_proxy",
                                     "HTTP_PROXY", "HTTPS_PROXY", "ALL_PROXY"};

} // namespace

void completeProxyVariables() {
    for (const char *variable : variables) {
        const QByteArray proxy = qgetenv(variable).trimmed();
        if (!proxy.isEmpty() && !proxy.contains("://"))
            qputenv(variable, "http://" + proxy);
    }
}

} // namespace quillmender
