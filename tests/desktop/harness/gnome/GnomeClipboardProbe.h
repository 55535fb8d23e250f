#pragma once

#include "desktop/harness/ClipboardContents.h"
#include "desktop/harness/gnome/RemoteControl.h"

#include <QDBusMessage>
#include <QObject>

#include <chrono>
#include <optional>

namespace quillmender::harness {

/// Another computer that looks at this desktop and reads its clipboard, byte by byte.
class GnomeClipboardProbe : public QObject {
    Q_OBJECT

  public:
    explicit GnomeClipboardProbe(const QDBusConnection &bus);

    /// All types with their bytes, in the order of the offer. Throws HarnessError when the owner
    /// does not come to the end of one in time.
    ClipboardContents read(std::chrono::milliseconds deadline);

    /// The first type of plain text that is offered; absent when there is none.
    std::optional<QByteArray> readText(std::chrono::milliseconds deadline);

  private Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc reads it
    void handleOwner(const QDBusMessage &signal);

  private: // NOLINT(readability-redundant-access-specifiers): ends the slots
    QByteArray receive(const QByteArray &type, std::chrono::milliseconds deadline);

    RemoteControl control_;
    QList<QByteArray> types_;
    bool isTold_ = false;
};

} // namespace quillmender::harness
