#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <optional>

namespace quillmender::harness {

/// Runs scripts in a KWin and takes what they report.
class KWinScripting : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.quillmender.Test.Report")

  public:
    /// Scripts are written into the folder.
    KWinScripting(const QDBusConnection &sessionBus, QString folder);
    ~KWinScripting() override;

    /// The script calls `report(text)` once, in each of its ways; that text is returned. Throws
    /// HarnessError when it does not come.
    QString run(const QString &script);

  public Q_SLOTS:
    void take(const QString &text) { report_ = text; }

  private:
    QVariant call(const QString &path, const QString &interface, const QString &method,
                  const QVariantList &arguments);

    QDBusConnection bus_;
    QString folder_;
    QString objectPath_;
    int count_ = 0;
    std::optional<QString> report_;
};

} // namespace quillmender::harness
