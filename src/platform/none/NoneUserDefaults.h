#pragma once

#include "platform/UserDefaults.h"

#include <QHash>

namespace quillmender {

/// Settings that live as long as the process.
class NoneUserDefaults : public UserDefaults {
  public:
    std::optional<QString> string(const QString &key) override { return find(strings_, key); }
    void setString(const QString &key, const QString &value) override { strings_[key] = value; }
    std::optional<QByteArray> data(const QString &key) override { return find(data_, key); }
    void setData(const QString &key, const QByteArray &value) override { data_[key] = value; }

  private:
    template <typename Value>
    static std::optional<Value> find(const QHash<QString, Value> &values, const QString &key) {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional<Value>(*found);
    }

    QHash<QString, QString> strings_;
    QHash<QString, QByteArray> data_;
};

} // namespace quillmender
