#pragma once

#include "platform/PasteboardItem.h"
#include "platform/linux/wayland/clipboard/DataControl.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <optional>

namespace quillmender::wayland {

class CopyWatch;
class OwnerQuestion;

/// Waits for the copy of an application that was typed the chord and had not come round to it when
/// the contents from before were put back. Only the first copy of that process is it; what anybody
/// else copies meanwhile is the user's.
class LateCopy : public QObject {
    Q_OBJECT

  public:
    LateCopy(DataControl &control, const CopyWatch &watch);

    /// To be told of what is put back; waits only where a copy is to come.
    void expect(const QList<PasteboardItem> &restored);

    void forget();

    /// To be told of each change of the clipboard by others.
    void noteChange();

  Q_SIGNALS:
    /// The copy has come, and has taken the place of this.
    void came(const QList<PasteboardItem> &restored);

  private:
    void examine();
    void judge(qint64 owner);

    DataControl &control_;
    const CopyWatch &watch_;
    bool isToCome_ = false; ///< since the chord nothing has been copied
    qint64 process_ = 0;
    std::optional<QList<PasteboardItem>> restored_;
    bool isToExamine_ = false; ///< once the compositor has said all of it
    quint64 turn_ = 0;
    QPointer<OwnerQuestion> question_; ///< while its owner is not known
};

} // namespace quillmender::wayland
