#include "desktop/harness/wayland/PipeReader.h"

#include <QDir>
#include <QFile>

#include <array>
#include <sys/stat.h>
#include <unistd.h>

namespace quillmender::harness {

namespace {

bool isOpenForReading(const QString &process, const QString &descriptor) {
    QFile file(QStringLiteral("/proc/%1/fdinfo/%2").arg(process, descriptor));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    for (const QByteArray &line : file.readAll().split('\n')) {
        // In octal; the last digit has the two bits of reading and writing, 0 is reading alone.
        if (line.startsWith("flags:"))
            return line.endsWith('0') || line.endsWith('4');
    }
    return false;
}

} // namespace

qint64 readerOfPipe(int descriptor) {
    struct stat status{};
    if (::fstat(descriptor, &status) != 0)
        return 0;
    const QString name = QStringLiteral("pipe:[%1]").arg(status.st_ino);
    const QDir processes(QStringLiteral("/proc"));
    for (const QString &process : processes.entryList({QStringLiteral("[0-9]*")}, QDir::Dirs)) {
        const QDir descriptors(QStringLiteral("/proc/%1/fd").arg(process));
        for (const QString &each : descriptors.entryList(QDir::Files | QDir::System)) {
            // The links of this folder lead to no path; what is read is their text.
            std::array<char, 64> target{};
            const ssize_t size =
                ::readlink(QFile::encodeName(descriptors.filePath(each)).constData(), target.data(),
                           target.size());
            if (size > 0 && QByteArrayView(target.data(), size) == name.toLatin1() &&
                isOpenForReading(process, each))
                return process.toLongLong();
        }
    }
    return 0;
}

} // namespace quillmender::harness
