#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace quillmender {

/// One representation of a pasteboard item: a type identifier and its bytes.
struct PasteboardRepresentation {
    QString type;
    QByteArray data;
    /// What else the platform must know to offer the same representation again (on X11 the
    /// property type and format). Opaque above the platform border; empty where unused.
    QByteArray platformTag;

    friend bool operator==(const PasteboardRepresentation &first,
                           const PasteboardRepresentation &second) {
        // To compare hundreds of megabytes with themselves would hold up the loop.
        const bool isSameData = first.data.constData() == second.data.constData() &&
                                first.data.size() == second.data.size();
        return first.type == second.type && first.platformTag == second.platformTag &&
               (isSameData || first.data == second.data);
    }
};

/// A map from type identifier to bytes that keeps the order in which its owner declared the types.
class PasteboardItem {
  public:
    /// A type that is already there is overwritten in place.
    void setData(const QString &type, const QByteArray &data, const QByteArray &platformTag = {});

    /// Null when the item has no such type.
    const PasteboardRepresentation *find(const QString &type) const;

    const QList<PasteboardRepresentation> &representations() const { return representations_; }

    friend bool operator==(const PasteboardItem &, const PasteboardItem &) = default;

  private:
    QList<PasteboardRepresentation> representations_;
};

} // namespace quillmender
