#pragma once

#include "platform/linux/wayland/clipboard/Descriptor.h"
#include "platform/linux/wayland/clipboard/SelectionOwner.h"

#include <QCoroTask>
#include <QObject>
#include <QSocketNotifier>

namespace quillmender::wayland {

/// Serves contents as the clipboard in place of the process that started this one.
class ClipboardServer : public QObject {
    Q_OBJECT

  public:
    /// The starter's end of the conversation may be closed at any time.
    ClipboardServer(DataControl &control, Descriptor starter, OfferedContents contents);

    /// Takes the clipboard when the starter says so; when it has gone without a word, only where
    /// nobody has it.
    QCoro::Task<> begin();

  Q_SIGNALS:
    /// The clipboard is somebody else's, or the compositor is gone, and everybody who has asked is
    /// served.
    void done();

  private:
    void handleAnswer();
    void takeOver();
    void tell(char word);
    void endWhenServed();

    DataControl &control_;
    Descriptor starter_;
    OfferedContents contents_;
    SelectionOwner owner_;
    QSocketNotifier answer_;
};

} // namespace quillmender::wayland
