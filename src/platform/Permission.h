#pragma once

#include <QObject>
#include <QString>

namespace quillmender {

/// Something that the desktop lets this program do when the user agrees. The desktop asks the user,
/// after `ask` and never before.
class Permission : public QObject {
    Q_OBJECT

  public:
    enum class State {
        unavailable, ///< nobody can be asked, as far as is known
        missing,     ///< the user can be asked
        asked,       ///< the desktop has been told to ask, and the user takes as long as it takes
        granted,
    };

    virtual State state() const = 0;

    /// How it stands, what came of asking included: in sentences for the user.
    virtual QString sentence() const = 0;

    /// Does nothing unless it is missing.
    virtual void ask() = 0;

  Q_SIGNALS:
    /// `state()` or `sentence()` answers something else now.
    void changed();
};

} // namespace quillmender
