#pragma once

#include <QByteArray>

namespace quillmender::wayland {

/// Bytes that another process is handed as a file. Nobody changes them any more.
class MemoryFile {
  public:
    /// One that cannot be made has no descriptor.
    explicit MemoryFile(const QByteArray &bytes);
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;
    ~MemoryFile();

    /// Negative when there is none.
    int descriptor() const { return descriptor_; }
    quint32 size() const { return size_; }

  private:
    int descriptor_;
    quint32 size_;
};

} // namespace quillmender::wayland
