#include "platform/linux/wayland/clipboard/ContentsFile.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <cerrno>
#include <sys/mman.h>
#include <sys/stat.h>

namespace quillmender::wayland {

namespace {

/// The length of the table follows, the table itself, and then the bytes of all types.
constexpr quint32 firstWord = 0x51436c69;
constexpr qsizetype headSize = 2 * qsizetype{sizeof(quint32)};

bool writeAll(const Descriptor &file, const QByteArray &bytes) {
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::write(file.get(), bytes.constData() + written,
                                      static_cast<size_t>(bytes.size() - written));
        if (count < 0 && errno != EINTR)
            return false;
        written += std::max<qsizetype>(count, 0);
    }
    return true;
}

} // namespace

Descriptor writeContentsFile(const OfferedContents &contents) {
    QByteArray table;
    QDataStream tableStream(&table, QIODevice::WriteOnly);
    for (const OfferedType &each : contents)
        tableStream << each.name << qint64{each.data.size()};
    QByteArray head;
    QDataStream headStream(&head, QIODevice::WriteOnly);
    headStream << firstWord << static_cast<quint32>(table.size());

    Descriptor file(::memfd_create("clipboard", MFD_CLOEXEC));
    bool isWritten = file.isOpen() && writeAll(file, head) && writeAll(file, table);
    for (const OfferedType &each : contents)
        isWritten = isWritten && writeAll(file, each.data);
    if (!isWritten)
        file.close();
    return file;
}

std::optional<OfferedContents> readContentsFile(const Descriptor &file) {
    struct stat status{};
    if (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size < headSize)
        return std::nullopt;
    const qsizetype size = status.st_size;
    void *const memory =
        ::mmap(nullptr, static_cast<size_t>(size), PROT_READ, MAP_PRIVATE, file.get(), 0);
    if (memory == MAP_FAILED)
        return std::nullopt;
    const auto *const bytes = static_cast<const char *>(memory);

    QDataStream head(QByteArray::fromRawData(bytes, headSize));
    quint32 word = 0;
    quint32 tableSize = 0;
    head >> word >> tableSize;
    if (word != firstWord || tableSize > size - headSize)
        return std::nullopt;
    QDataStream table(QByteArray::fromRawData(bytes + headSize, tableSize));
    qsizetype position = headSize + tableSize;
    OfferedContents contents;
    while (!table.atEnd()) {
        OfferedType each;
        qint64 length = 0;
        table >> each.name >> length;
        if (table.status() != QDataStream::Ok || length < 0 || length > size - position)
            return std::nullopt;
        each.data = QByteArray::fromRawData(bytes + position, length);
        position += length;
        contents.append(each);
    }
    return contents;
}

} // namespace quillmender::wayland
