#pragma once

#include "platform/linux/portal/PortalAnswer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QObject>

class QDBusPendingCallWatcher;

namespace quillmender::portal {

/// One method of the portal that answers later (org.freedesktop.portal.Request): listens for the
/// response before it asks, since that may come before the reply of the method. The first response
/// counts. What is given up is closed, so that the user is not asked any more.
class PortalRequest : public QObject {
    Q_OBJECT

  public:
    explicit PortalRequest(QDBusConnection bus);
    /// Gives up what has not been answered.
    ~PortalRequest() override;

    /// To be passed on in the options of the method, as `handle_token`.
    const QString &token() const { return token_; }

    void send(const QDBusMessage &call);

    bool isOver() const { return isOver_; }

    /// Once it is over.
    const PortalAnswer &answer() const { return answer_; }

    /// Ends it for a reason of our own, where it is not over.
    void fail(const QString &reason);

    /// The same, and tells the portal.
    void giveUp(const QString &reason);

  Q_SIGNALS:
    void over();

  private Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc reads it
    void handleResponse(const QDBusMessage &response);

  private: // NOLINT(readability-redundant-access-specifiers): ends the slots
    void handleReply(QDBusPendingCallWatcher *watcher);
    void close() const;
    void accept(const QDBusMessage &response);
    void finish(PortalAnswer answer);

    QDBusConnection bus_;
    const QString token_;
    QString path_;
    QHash<QString, QDBusMessage> others_; ///< what came under other paths, before ours was certain
    PortalAnswer answer_;
    bool isSent_ = false;
    bool isOver_ = false;
};

} // namespace quillmender::portal
