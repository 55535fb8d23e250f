#pragma once

#include "platform/PasteboardItem.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <optional>

namespace quillmender {

/// What was last read from another application's clipboard, for a while: it need not be read again,
/// nor taken from its owner only to be offered the same.
class LastReading : public QObject {
  public:
    LastReading();

    void remember(const QList<PasteboardItem> &items);
    void forget() { items_.reset(); }

    const std::optional<QList<PasteboardItem>> &items() const { return items_; }

    /// So large that reading it again would be felt.
    bool isLarge() const;

  private:
    void age();

    std::optional<QList<PasteboardItem>> items_;
    QTimer aging_;
};

} // namespace quillmender
