#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillmender {

/// The user's plain settings by key, each written at once. A store that cannot be read or written
/// never stops the program: reads find nothing, writes are lost.
class UserDefaults {
  public:
    UserDefaults() = default;
    UserDefaults(const UserDefaults &) = delete;
    UserDefaults &operator=(const UserDefaults &) = delete;
    virtual ~UserDefaults() = default;

    virtual std::optional<QString> string(const QString &key) = 0;
    virtual void setString(const QString &key, const QString &value) = 0;
    virtual std::optional<QByteArray> data(const QString &key) = 0;
    virtual void setData(const QString &key, const QByteArray &value) = 0;
};

} // namespace quillmender
