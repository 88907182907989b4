#include "numbers/number_reader.h"

#include "numbers/strtod.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>
#include <version>

namespace ozm {

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

const char* ReadScientificNumber(const char* p, const char* end, double& value) {
    p = SkipWhitespace(p, end);
    const bool hasSign = p != end && (*p == '-' || *p == '+');
    const DecimalDigits digits = ScanDecimalDigits(hasSign ? p + 1 : p, end);
    if (digits.count == 0) return nullptr;
    DecimalExponent exponent{digits.end, 0};
    if (digits.end != end && (*digits.end == 'e' || *digits.end == 'E')) {
        exponent = ScanDecimalExponent(digits.end, end);
        if (!exponent.end) return nullptr;
    }
    value = ConvertDecimal(digits, exponent.value, {p, static_cast<uint64_t>(exponent.end - p)});
    return exponent.end;
}

} // namespace ozm
