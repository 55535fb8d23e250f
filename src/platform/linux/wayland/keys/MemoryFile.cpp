#include "platform/linux/wayland/keys/MemoryFile.h"

#include <QFile>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace quillmender::wayland {

MemoryFile::MemoryFile(const QByteArray &bytes)
    : descriptor_(memfd_create("keymap", MFD_CLOEXEC | MFD_ALLOW_SEALING)),
      size_(static_cast<quint32>(bytes.size())) {
    if (descriptor_ < 0)
        return;
    QFile file;
    const bool isWritten = file.open(descriptor_, QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                           file.write(bytes) == bytes.size();
    if (!isWritten) {
        close(descriptor_);
        descriptor_ = -1;
        return;
    }
    fcntl(descriptor_, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE | F_SEAL_SEAL);
}

MemoryFile::~MemoryFile() {
    if (descriptor_ >= 0)
        close(descriptor_);
}

} // namespace quillmender::wayland
