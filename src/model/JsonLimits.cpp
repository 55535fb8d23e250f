#include "model/JsonLimits.h"

namespace quillmender {

namespace {

constexpr int deepestNesting = 512;
constexpr int mostValues = 200'000;

} // namespace

JsonLimits::Verdict JsonLimits::check(const QByteArray &bytes) {
    JsonLimits limits;
    // Its result says no more than the verdict.
    static_cast<void>(Json::sax_parse(bytes.cbegin(), bytes.cend(), &limits));
    return limits.verdict_;
}

bool JsonLimits::parse_error(std::size_t, const std::string &,
                             const nlohmann::detail::exception &error) {
    constexpr int numberOverflow = 406;
    verdict_ = error.id == numberOverflow ? Verdict::numberTooLarge : Verdict::malformed;
    return false;
}

bool JsonLimits::count() {
    if (++values_ > mostValues)
        verdict_ = Verdict::tooComplex;
    return verdict_ == Verdict::fits;
}

bool JsonLimits::enter() {
    if (++depth_ > deepestNesting)
        verdict_ = Verdict::tooComplex;
    return count();
}

bool JsonLimits::leave() {
    --depth_;
    return true;
}

} // namespace quillmender
