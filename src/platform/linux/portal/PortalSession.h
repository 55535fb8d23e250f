#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

namespace quillmender::portal {

/// A session of the portal (org.freedesktop.portal.Session), closed when this ends, even when its
/// making was given up half-way.
class PortalSession : public QObject {
    Q_OBJECT

  public:
    explicit PortalSession(QDBusConnection bus);
    ~PortalSession() override;

    /// To be passed on in the options of CreateSession, as `session_handle_token`.
    const QString &token() const { return token_; }

    const QString &path() const { return path_; }

    /// Portals that choose the path themselves tell it.
    void setPath(const QString &path);

    /// Closes it and waits until it is, a quarter of a second at most: for the end of the program,
    /// after which nothing is sent any more.
    void closeNow();

  Q_SIGNALS:
    /// By the portal.
    void closed();

  private Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc reads it
    void handleClosed();

  private: // NOLINT(readability-redundant-access-specifiers): ends the slots
    void listen();

    QDBusConnection bus_;
    const QString token_;
    QString path_;
    bool isClosed_ = false;
};

} // namespace quillmender::portal
