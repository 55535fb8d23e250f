#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace quillmender::fakes {

/// The platform calls of a test in the order in which they were made, across all fakes.
using CallLog = std::shared_ptr<QStringList>;

inline CallLog makeCallLog() {
    return std::make_shared<QStringList>();
}

} // namespace quillmender::fakes
