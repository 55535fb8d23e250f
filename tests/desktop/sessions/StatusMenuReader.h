#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace quillmender {

/// A desktop's status area that reads the menu of the one item in it. Its name is on the bus as
/// long as it lives.
class StatusMenuReader : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

  public:
    struct Entry {
        int id = 0;
        QString title;
        bool isVisible = true;
    };

    explicit StatusMenuReader(const QDBusConnection &bus);
    ~StatusMenuReader() override;

    static bool hasHost() { return true; }
    static int protocolVersion() { return 0; }

    /// Empty as long as there is no item.
    QList<Entry> entries() const;
    QStringList visibleTitles() const;

    /// As if the user had chosen it.
    void choose(const QString &title) const;

  public Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc reads it
    void RegisterStatusNotifierItem(const QString &service) { item_ = service; }

  Q_SIGNALS:
    void StatusNotifierItemRegistered(const QString &service);

  private:
    QDBusMessage ask(const QDBusMessage &question) const;
    QString menuPath() const;

    QDBusConnection bus_;
    QString item_;
};

} // namespace quillmender
