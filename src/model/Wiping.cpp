#include "model/Wiping.h"

namespace quillmender {

namespace {

// Through a volatile pointer, for nobody reads what is written here.
void overwrite(volatile char *byte, qsizetype size) {
    for (qsizetype i = 0; i < size; ++i)
        byte[i] = 0;
}

} // namespace

void wipe(QByteArray &secret) {
    if (secret.isDetached())
        overwrite(secret.data(), secret.size());
    secret.clear();
}

void wipe(QString &secret) {
    if (secret.isDetached())
        overwrite(reinterpret_cast<char *>(secret.data()),
                  secret.size() * qsizetype{sizeof(QChar)});
    secret.clear();
}

} // namespace quillmender
