#include "model/Json.h"

#include "model/DecodingError.h"
#include "model/TextRules.h"

namespace quillmender {

namespace {

constexpr int deepestNesting = 512;
constexpr int mostValues = 1'000'000;

[[noreturn]] void fail(const char *name, const char *what) {
    throw DecodingError(QStringLiteral("The data could not be read: “%1” %2.")
                            .arg(QString::fromUtf8(name), QString::fromUtf8(what)));
}

const Json *find(const Json &parent, const char *name) {
    if (!parent.is_object())
        fail(name, "was looked for in something that is not an object");
    const auto found = parent.find(name);
    return found == parent.end() || found->is_null() ? nullptr : &*found;
}

const Json &require(const Json &parent, const char *name) {
    const auto *found = find(parent, name);
    if (found == nullptr)
        fail(name, "is missing");
    return *found;
}

void checkArray(const Json &value, const char *name) {
    if (!value.is_array())
        fail(name, "is not a list");
}

QString checkedText(const Json &value, const char *name) {
    if (!value.is_string())
        fail(name, "is not a text");
    return QString::fromStdString(value.get_ref<const std::string &>());
}

} // namespace

QByteArray encodeJson(const Json &json) {
    return QByteArray::fromStdString(json.dump(-1, ' ', false, Json::error_handler_t::replace));
}

Json jsonText(const QString &text) {
    return toValidUtf8(text).toStdString();
}

Json decodeJson(const QByteArray &bytes) {
    int values = 0;
    const auto limit = [&values](int depth, Json::parse_event_t, const Json &) {
        if (depth > deepestNesting || ++values > mostValues)
            throw DecodingError(QStringLiteral("The data could not be read: it is too complex."));
        return true;
    };
    try {
        return Json::parse(bytes.cbegin(), bytes.cend(), limit);
    } catch (const Json::exception &) {
        // The parser's own text quotes the bytes.
        throw DecodingError(QStringLiteral("The data could not be read: it is not valid JSON."));
    }
}

namespace member {

const Json &object(const Json &parent, const char *name) {
    const auto &value = require(parent, name);
    if (!value.is_object())
        fail(name, "is not an object");
    return value;
}

const Json &array(const Json &parent, const char *name) {
    const auto &value = require(parent, name);
    checkArray(value, name);
    return value;
}

QString text(const Json &parent, const char *name) {
    return checkedText(require(parent, name), name);
}

bool boolean(const Json &parent, const char *name) {
    const auto &value = require(parent, name);
    if (!value.is_boolean())
        fail(name, "is neither true nor false");
    return value.get<bool>();
}

const Json *optionalArray(const Json &parent, const char *name) {
    const auto *value = find(parent, name);
    if (value != nullptr)
        checkArray(*value, name);
    return value;
}

std::optional<QString> optionalText(const Json &parent, const char *name) {
    const auto *value = find(parent, name);
    if (value == nullptr)
        return std::nullopt;
    return checkedText(*value, name);
}

} // namespace member

} // namespace quillmender
