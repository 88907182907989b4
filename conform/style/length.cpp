#include "style/length.h"

#include "geometry/css_units.h"
#include "geometry/number_text.h"
#include "geometry/text.h"

#include <algorithm>

namespace ozm::conform {
namespace {

std::optional<CssLength> LengthIn(double value, std::string_view unit) {
    constexpr struct {
        std::string_view name;
        Unit unit;
    } kRelative[] = {{"%", Unit::Percent}, {"em", Unit::Em}, {"ex", Unit::Ex}, {"rem", Unit::Rem}};
    for (const auto& relative : kRelative) {
        if (EqualsIgnoringCase(unit, relative.name)) return CssLength{value, relative.unit};
    }
    if (const std::optional<double> size = AbsoluteLengthUnit(unit))
        return CssLength{value * *size, Unit::User};
    return {};
}

} // namespace

std::optional<CssLength> ReadLength(std::string_view text) {
    text = Trim(text);
    const char* p = text.data();
    const char* const end = p + text.size();
    double value = 0;
    if (!ReadNumber(p, end, value)) return {};
    if (p == end) return CssLength{value, Unit::User};
    return LengthIn(value, {p, static_cast<size_t>(end - p)});
}

double Resolve(CssLength length, const LengthBase& base) {
    switch (length.unit) {
    case Unit::User: break;
    case Unit::Percent: return length.value / 100 * base.percent;
    case Unit::Em: return length.value * base.fontSize;
    case Unit::Ex: return length.value * base.fontSize / 2;
    case Unit::Rem: return length.value * base.rootFontSize;
    }
    return length.value;
}

std::optional<double> ReadShare(std::string_view text) {
    text = Trim(text);
    const bool isPercent = text.ends_with('%');
    if (isPercent) text.remove_suffix(1);
    const std::optional<double> number = ReadPlainNumber(text);
    if (!number) return {};
    return std::clamp(isPercent ? *number / 100 : *number, 0.0, 1.0);
}

std::optional<double> ReadPlainNumber(std::string_view text) {
    text = Trim(text);
    const char* p = text.data();
    const char* const end = p + text.size();
    double value = 0;
    return ReadNumber(p, end, value) && p == end ? std::optional(value) : std::nullopt;
}

} // namespace ozm::conform
