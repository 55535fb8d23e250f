#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <optional>

namespace quillmender {

/// A window of another application, as it is told of by somebody who is not the window system.
struct FrontWindow {
    QByteArray id; ///< never that of another window while we run
    qint64 processId = 0;
    QString application; ///< its name; empty until it has told it
    QString title;       ///< empty until it has told it
};

/// The window that the user works in, where the window system keeps that to itself. Asking costs
/// nothing: whoever tells of it does so by events.
class FrontWindows : public QObject {
    Q_OBJECT

  public:
    /// The window of another application that was active last, for as long as it is there; absent
    /// when nobody has told of one.
    virtual std::optional<FrontWindow> latest() const = 0;

    /// Whether it is active still, as far as it has told.
    virtual bool isActive() const = 0;

  Q_SIGNALS:
    void changed();
};

} // namespace quillmender
