#pragma once

#include "platform/UserDefaults.h"
#include "platform/linux/services/SerialWorker.h"

#include <QHash>
#include <QSettings>

#include <chrono>

namespace quillmender {

/// Settings in `$XDG_CONFIG_HOME/quillmender/quillmender.conf` (INI, section General), written
/// whole and atomically at each change, which takes a while on a disk that is asked to be sure: so
/// another thread does it, and skips values that are replaced meanwhile. An administrator's
/// defaults come from the same file under `$XDG_CONFIG_DIRS`.
class SettingsFile : public UserDefaults {
  public:
    /// Destruction waits `lastWait` at most for the last changes to be written.
    explicit SettingsFile(std::chrono::milliseconds lastWait = std::chrono::seconds(3));
    ~SettingsFile() override;

    std::optional<QString> string(const QString &key) override;
    void setString(const QString &key, const QString &value) override;
    std::optional<QByteArray> data(const QString &key) override;
    void setData(const QString &key, const QByteArray &value) override;

  private:
    std::chrono::milliseconds lastWait_;
    QSettings settings_;              ///< only read
    QHash<QString, QString> changed_; ///< in this run
    SerialWorker worker_;
};

} // namespace quillmender
