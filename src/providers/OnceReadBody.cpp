#include "providers/OnceReadBody.h"

#include <algorithm>

namespace quillmender {

OnceReadBody::OnceReadBody(QByteArray body, QObject *parent)
    : QIODevice(parent),
      body_(std::move(body)) {
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

bool OnceReadBody::seek(qint64 position) {
    return !wasRead_ && QIODevice::seek(position);
}

qint64 OnceReadBody::readData(char *data, qint64 maxSize) {
    const auto count = std::min(maxSize, size() - pos());
    std::copy_n(body_.constData() + pos(), count, data);
    wasRead_ = wasRead_ || count > 0;
    return count > 0 || maxSize == 0 ? count : -1;
}

qint64 OnceReadBody::writeData(const char *, qint64) {
    return -1;
}

} // namespace quillmender
