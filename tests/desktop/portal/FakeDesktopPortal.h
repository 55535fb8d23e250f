#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QHash>
#include <QStringList>
#include <QVariantMap>

namespace quillmender {

/// A desktop portal that answers each method as it is told to, and remembers what it was asked.
/// Its name is on the bus as long as it lives.
class FakeDesktopPortal : public QDBusVirtualObject {
    Q_OBJECT

  public:
    enum class Manner {
        usual,
        early,     ///< the response comes before the reply
        elsewhere, ///< early, and under a path of its own choice
        twice,
        garbled,
        silent,  ///< a reply, but no response
        refused, ///< an error
        mute,    ///< no reply either
    };
    struct Answer {
        quint32 code = 0;
        QVariantMap results{};
        Manner manner = Manner::usual;
    };

    /// On the bus with this address, or else the session's.
    explicit FakeDesktopPortal(const QString &address = {});
    ~FakeDesktopPortal() override;

    /// For "Interface.Method" without the prefix; what is not set is granted without results. The
    /// code of "Interface.version" is that version, 1 when it is not set.
    void set(const QString &method, const Answer &answer) { answers_.insert(method, answer); }
    void grant(const QString &method, const QVariantMap &results) { set(method, {0, results}); }

    /// What it was asked, oldest first: "Interface.Method", keys with code and state.
    QStringList asked() const { return asked_; }
    void forget() { asked_.clear(); }

    /// The options of the latest call of a method.
    QVariantMap options(const QString &method) const { return options_.value(method); }

    /// The session that was made last.
    QString session() const { return session_; }

    void send(const QString &path, const QString &interface, const QString &signal,
              const QVariantList &arguments);

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
    QString introspect(const QString &) const override { return {}; }

  private:
    void answer(const QDBusMessage &call, const QString &method);
    void respond(const QString &path, const Answer &answer);

    QString connectionName_;
    QDBusConnection bus_;
    QHash<QString, Answer> answers_;
    QHash<QString, QVariantMap> options_;
    QStringList asked_;
    QString session_;
};

} // namespace quillmender
