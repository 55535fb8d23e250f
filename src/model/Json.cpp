#include "model/Json.h"

#include "model/DecodingError.h"
#include "model/JsonLimits.h"
#include "model/TextRules.h"

#include <QRegularExpression>

namespace quillmender {

namespace {

constexpr qsizetype longestNumber = 1000;

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

[[noreturn]] void failAsInvalid() {
    // The parser's own text would quote the bytes.
    throw DecodingError(QStringLiteral("The data could not be read: it is not valid JSON."));
}

/// A number that is well written and larger than any that can be held. One of thousands of digits
/// is not looked at.
bool isTooLarge(const QByteArray &token) {
    if (token.size() > longestNumber)
        return false;
    bool isHeld = false;
    token.toDouble(&isHeld);
    if (isHeld)
        return false;
    static const QRegularExpression number(QRegularExpression::anchoredPattern(
        QStringLiteral("-?(?:0|[1-9][0-9]*)(?:\\.[0-9]+)?(?:[eE][+-]?[0-9]+)?")));
    return number.match(QString::fromLatin1(token)).hasMatch();
}

/// The document with zeros for the numbers that are too large.
QByteArray withoutLargeNumbers(const QByteArray &bytes) {
    const auto isOfNumber = [](char byte) {
        return (byte >= '0' && byte <= '9') || byte == '-' || byte == '+' || byte == '.' ||
               byte == 'e' || byte == 'E';
    };
    QByteArray kept;
    kept.reserve(bytes.size());
    bool isInText = false;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        qsizetype end = i;
        while (!isInText && end < bytes.size() && isOfNumber(bytes[end]))
            ++end;
        if (end > i) {
            const QByteArray token = bytes.sliced(i, end - i);
            kept.append(isTooLarge(token) ? QByteArrayLiteral("0") : token);
            i = end - 1;
            continue;
        }
        kept.append(bytes[i]);
        if (isInText && bytes[i] == '\\' && i + 1 < bytes.size())
            kept.append(bytes[++i]);
        else if (bytes[i] == '"')
            isInText = !isInText;
    }
    return kept;
}

} // namespace

QByteArray encodeJson(const Json &json) {
    return QByteArray::fromStdString(json.dump(-1, ' ', false, Json::error_handler_t::replace));
}

Json jsonText(const QString &text) {
    return toValidUtf8(text).toStdString();
}

Json decodeJson(const QByteArray &bytes) {
    // The parser takes a NUL for the end.
    if (bytes.contains('\0'))
        failAsInvalid();
    QByteArray document = bytes;
    auto verdict = JsonLimits::check(document);
    if (verdict == JsonLimits::Verdict::numberTooLarge) {
        // Nobody asks for a number, so that this is no reason to refuse the document.
        document = withoutLargeNumbers(document);
        verdict = JsonLimits::check(document);
    }
    if (verdict == JsonLimits::Verdict::tooComplex)
        throw DecodingError(QStringLiteral("The data could not be read: it is too complex."));
    if (verdict != JsonLimits::Verdict::fits)
        failAsInvalid();
    return Json::parse(document.cbegin(), document.cend());
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
