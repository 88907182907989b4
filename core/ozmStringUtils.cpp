#include <Ozmira/ozmStringUtils.h>

#include "numbers/number_reader.h"
#include "numbers/strtod.h"

namespace ozm {

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
    const char* const end = SkipScientificNumber(text.begin(), text.end());
    return {text.data, end ? static_cast<uint64_t>(end - text.data) : 0};
}

} // namespace ozm
