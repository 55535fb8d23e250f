#pragma once

#include "model/Json.h"

namespace quillmender {

/// Walks through a document without keeping any of it, so that one that is hostile or malformed
/// costs neither stack nor memory. (The parser's own callback takes time with the square of a
/// list's length.)
class JsonLimits : public nlohmann::json_sax<Json> {
  public:
    enum class Verdict { fits, malformed, tooComplex, numberTooLarge };

    static Verdict check(const QByteArray &bytes);

    bool null() override { return count(); }
    bool boolean(bool) override { return count(); }
    bool number_integer(number_integer_t) override { return count(); }
    bool number_unsigned(number_unsigned_t) override { return count(); }
    bool number_float(number_float_t, const string_t &) override { return count(); }
    bool string(string_t &) override { return count(); }
    bool binary(binary_t &) override { return count(); }
    bool key(string_t &) override { return count(); }
    bool start_object(std::size_t) override { return enter(); }
    bool start_array(std::size_t) override { return enter(); }
    bool end_object() override { return leave(); }
    bool end_array() override { return leave(); }
    bool parse_error(std::size_t position, const std::string &token,
                     const nlohmann::detail::exception &error) override;

  private:
    JsonLimits() = default;

    bool count();
    bool enter();
    bool leave();

    Verdict verdict_ = Verdict::fits;
    int depth_ = 0;
    int values_ = 0;
};

} // namespace quillmender
