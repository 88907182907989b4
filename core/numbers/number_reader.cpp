#include "numbers/number_reader.h"

#include "numbers/strtod.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>
#include <version>

namespace ozm {
namespace {

struct ScientificNumber {
    const char* first; ///< The sign, or the first digit or point.
    DecimalDigits digits;
    DecimalExponent exponent; ///< Empty, at the end of the digits, if there is none.
};

/// Scans a number after optional whitespace. Returns false if there is none.
bool Scan(const char* p, const char* end, ScientificNumber& number) {
    p = SkipWhitespace(p, end);
    const bool hasSign = p != end && (*p == '-' || *p == '+');
    number.first = p;
    number.digits = ScanDecimalDigits(hasSign ? p + 1 : p, end);
    if (number.digits.count == 0) return false;
    const char* const digitsEnd = number.digits.end;
    if (digitsEnd == end || (*digitsEnd != 'e' && *digitsEnd != 'E')) {
        number.exponent = {digitsEnd, 0};
    } else {
        number.exponent = ScanDecimalExponent(digitsEnd, end);
    }
    return number.exponent.end != nullptr;
}

} // namespace

double ConvertDecimalText(StringView text) {
#if defined(__cpp_lib_to_chars) // libc++ cannot convert floating-point numbers.
    const char* const first = *text.data == '+' ? text.begin() + 1 : text.begin();
    double value = 0;
    const auto result = std::from_chars(first, text.end(), value);
    // Near the smallest normal number, the C library decides what is a range error.
    constexpr double kSafelyNormal = 2 * std::numeric_limits<double>::min();
    if (result.ec == std::errc() && std::isfinite(value) && std::fabs(value) >= kSafelyNormal) return value;
#endif
    return StrtodInCLocale(text);
}

const char* SkipScientificNumber(const char* p, const char* end) {
    ScientificNumber number;
    return Scan(p, end, number) ? number.exponent.end : nullptr;
}

const char* ReadScientificNumber(const char* p, const char* end, double& value) {
    ScientificNumber number;
    if (!Scan(p, end, number)) return nullptr;
    const auto length = static_cast<uint64_t>(number.exponent.end - number.first);
    value = ConvertDecimal(number.digits, number.exponent.value, {number.first, length});
    return number.exponent.end;
}

} // namespace ozm
