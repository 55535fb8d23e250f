#pragma once

#include <QByteArray>
#include <QString>
#include <nlohmann/json.hpp>

#include <optional>

namespace quillmender {

/// JSON whose members keep their order.
using Json = nlohmann::ordered_json;

/// The document in compact form. Texts become valid UTF-8 whatever they hold.
QByteArray encodeJson(const Json &json);

/// The text as a JSON value.
Json jsonText(const QString &text);

/// The document in `bytes`, which must be UTF-8. Throws DecodingError when it is none, or when it
/// is nested deeper or holds more values than any sensible one does, so that hostile bytes cost
/// neither stack nor much more memory than their own size. Numbers that are too large to be held
/// read as 0.
Json decodeJson(const QByteArray &bytes);

/// Strict reading of one member: DecodingError when it has the wrong type or is missing. A null
/// counts as missing. Members that nobody asks for are ignored.
namespace member {
const Json &object(const Json &parent, const char *name);
const Json &array(const Json &parent, const char *name);
QString text(const Json &parent, const char *name);
bool boolean(const Json &parent, const char *name);

/// Null or nothing when the member is missing.
const Json *optionalArray(const Json &parent, const char *name);
std::optional<QString> optionalText(const Json &parent, const char *name);
} // namespace member

} // namespace quillmender
