#pragma once

#include "desktop/harness/ClipboardContents.h"
#include "desktop/harness/SelectionOwner.h"
#include "desktop/harness/gnome/RemoteControl.h"

#include <QDBusMessage>
#include <QObject>

#include <thread>
#include <vector>

namespace quillmender::harness {

/// Another computer whose user has copied something and looks at this desktop from there: so the
/// clipboard is taken without a window. It serves while the event loop of the test runs.
class GnomeClipboardOwner : public QObject, public SelectionOwner {
    Q_OBJECT

  public:
    /// Owns the clipboard when constructed. Of the representations only target and bytes count.
    GnomeClipboardOwner(const QDBusConnection &bus, QList<ClipboardRepresentation> offer);
    ~GnomeClipboardOwner() override;

    bool ownsSelection() const override { return owns_; }
    QList<QByteArray> requests() const override { return requests_; }

  private Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc reads it
    void handleOwner(const QDBusMessage &signal);
    void handleTransfer(const QDBusMessage &signal);

  private: // NOLINT(readability-redundant-access-specifiers): ends the slots
    RemoteControl control_;
    QList<ClipboardRepresentation> offer_;
    QList<QByteArray> requests_;
    bool owns_ = false;
    std::vector<std::jthread> writers_;
};

} // namespace quillmender::harness
