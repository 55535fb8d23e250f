#pragma once

#include "platform/Pasteboard.h"

#include <QCoroTask>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace quillmender {

/// The selections of an X server beside a compositor, which hands on what is copied on either side
/// to the other. Both members are there, or none is.
struct BridgedClipboard {
    std::unique_ptr<Pasteboard> pasteboard{};

    /// The text of the PRIMARY selection. Not called any more when the pasteboard has gone.
    std::function<QCoro::Task<std::optional<QString>>()> readPrimary{};
};

} // namespace quillmender
