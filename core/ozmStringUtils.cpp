#include <Ozmira/ozmStringUtils.h>

#include "numbers/number_reader.h"
#include "numbers/strtod.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <string>

#if defined(__APPLE__)
#include <xlocale.h>
#else
#include <locale.h>
#endif

namespace ozm {
namespace {

double StrtodInCLocale(const char* text) {
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    errno = 0;
    const double value = strtod_l(text, nullptr, cLocale);
    return errno == ERANGE ? 0.0 : value;
}

} // namespace

double StrtodInCLocale(StringView text) {
    std::array<char, 128> buffer;
    if (text.length < buffer.size()) {
        *std::copy(text.begin(), text.end(), buffer.begin()) = '\0';
        return StrtodInCLocale(buffer.data());
    }
    return StrtodInCLocale(std::string(text.data, text.length).c_str());
}

double StringView::toDouble() const {
    const char* const last = data + length;
    const char* const first = SkipWhitespace(data, last);
    const bool hasSign = first != last && (*first == '-' || *first == '+');
    const DecimalDigits digits = ScanDecimalDigits(hasSign ? first + 1 : first, last);
    if (digits.count == 0) {
        // Only "inf" and "nan" have a value without digits.
        const char next = digits.end != last ? *digits.end : '\0';
        const bool mayBeNamed = next == 'i' || next == 'I' || next == 'n' || next == 'N';
        return mayBeNamed ? StrtodInCLocale(*this) : 0.0;
    }
    DecimalExponent exponent{digits.end, 0};
    if (digits.end != last) {
        if (*digits.end == 'x' || *digits.end == 'X') return StrtodInCLocale(*this); // It may be hexadecimal.
        if (*digits.end == 'e' || *digits.end == 'E') {
            const DecimalExponent scanned = ScanDecimalExponent(digits.end, last);
            if (scanned.end) exponent = scanned;
        }
    }
    return ConvertDecimal(digits, exponent.value, {first, static_cast<uint64_t>(exponent.end - first)});
}

StringView ScanScientificNumber(StringView text) {
    double value;
    const char* const end = ReadScientificNumber(text.begin(), text.end(), value);
    return {text.data, end ? static_cast<uint64_t>(end - text.data) : 0};
}

} // namespace ozm
