#pragma once

#include "model/BuiltInActionConfig.h"
#include "model/CustomAction.h"

#include <QByteArray>

#include <optional>

namespace quillmender {

/// The two stored JSON documents of actions. Decoding throws DecodingError: one bad entry makes
/// the whole document unreadable.
QByteArray encodeBuiltInActions(const QList<BuiltInActionConfig> &actions);
QList<BuiltInActionConfig> decodeBuiltInActions(const QByteArray &document);
QByteArray encodeCustomActions(const QList<CustomAction> &actions);
QList<CustomAction> decodeCustomActions(const QByteArray &document);

/// What a program that starts makes of the stored document: every built-in action in its order;
/// the starter list when the document is absent or unreadable.
QList<BuiltInActionConfig> loadedBuiltInActions(const std::optional<QByteArray> &document);

/// The same for the user's own actions: none when the document is absent or unreadable.
QList<CustomAction> loadedCustomActions(const std::optional<QByteArray> &document);

} // namespace quillmender
