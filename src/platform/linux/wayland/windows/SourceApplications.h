#pragma once

#include "platform/linux/wayland/Toplevels.h"
#include "platform/linux/wayland/windows/WaylandRunningApplication.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>

#include <functional>
#include <memory>

namespace quillmender::wayland {

/// The application in front as the compositor's windows have it, with its process. Where the
/// compositor does not tell that, somebody else is asked when it is wanted first, and what he says
/// holds for as long as the window is there; until then it is 0.
class SourceApplications : public QObject {
    Q_OBJECT

  public:
    /// The process of the active window, 0 when it cannot be told for certain.
    using FindProcess = std::function<QCoro::Task<qint64>(Toplevel active)>;

    /// An answer that takes longer may be about another window.
    static constexpr std::chrono::milliseconds longestSearch{250};

    /// The windows must outlive the object. `findProcess` may be empty.
    explicit SourceApplications(Toplevels &toplevels, FindProcess findProcess = {});

    /// Null when no window is active.
    std::shared_ptr<const WaylandRunningApplication> frontmost();

    Toplevels &toplevels() const { return toplevels_; }

  private:
    static QCoro::Task<> search(QPointer<SourceApplications> self, Toplevel window);
    std::shared_ptr<qint64> processOf(const Toplevel &window);

    Toplevels &toplevels_;
    FindProcess findProcess_;
    /// Of the windows that were in front last; their ids are never used again.
    QHash<QByteArray, std::shared_ptr<qint64>> processes_;
    QByteArray searched_; ///< a search for it is under way
};

} // namespace quillmender::wayland
