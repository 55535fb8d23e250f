#pragma once

#include <QByteArray>
#include <QUrl>

#include <optional>

namespace quillmender {

struct HttpResponse {
    std::optional<int> status; ///< absent when the answer did not come over HTTP
    QByteArray body;
    QUrl redirectTarget{}; ///< as the server named it, perhaps relative; empty without a redirect
};

} // namespace quillmender
