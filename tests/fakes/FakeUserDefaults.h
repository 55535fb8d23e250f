#pragma once

#include "platform/none/NoneUserDefaults.h"

#include <QStringList>

namespace quillmender::fakes {

/// Defaults in memory that remember what was written, in order, the same value again too.
class FakeUserDefaults : public NoneUserDefaults {
  public:
    void setString(const QString &key, const QString &value) override {
        writes.append(key + u'=' + value);
        NoneUserDefaults::setString(key, value);
    }
    void setData(const QString &key, const QByteArray &value) override {
        writes.append(key);
        NoneUserDefaults::setData(key, value);
    }

    QStringList writes;
};

} // namespace quillmender::fakes
