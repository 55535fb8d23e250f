#pragma once

#include "platform/UserDefaults.h"

namespace quillmender {

/// The standard defaults domain of this application, under the keys exactly as they are given. (A
/// settings class of the toolkit would rewrite the dots in them.)
class MacUserDefaults : public UserDefaults {
  public:
    std::optional<QString> string(const QString &key) override;
    void setString(const QString &key, const QString &value) override;
    std::optional<QByteArray> data(const QString &key) override;
    void setData(const QString &key, const QByteArray &value) override;
};

} // namespace quillmender
