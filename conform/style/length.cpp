#include "style/length.h"

#include "geometry/number_text.h"
#include "style/text.h"

#include <algorithm>

namespace ozm::conform {
namespace {

constexpr struct {
    std::string_view name;
    double factor;
    Unit unit;
} kUnits[] = {
    {"px", 1, Unit::User},       {"%", 1, Unit::Percent},       {"em", 1, Unit::Em},
    {"pt", 4.0 / 3, Unit::User}, {"mm", 96 / 25.4, Unit::User}, {"cm", 96 / 2.54, Unit::User},
    {"in", 96, Unit::User},      {"pc", 16, Unit::User},        {"ex", 1, Unit::Ex},
    {"rem", 1, Unit::Rem},       {"q", 96 / 101.6, Unit::User},
};

} // namespace

std::optional<CssLength> ReadLength(std::string_view text) {
    text = Trim(text);
    const char* p = text.data();
    const char* const end = p + text.size();
    double value = 0;
    if (!ReadNumber(p, end, value)) return {};
    if (p == end) return CssLength{value, Unit::User};
    const std::string_view name(p, static_cast<size_t>(end - p));
    for (const auto& unit : kUnits) {
        if (EqualsIgnoringCase(name, unit.name)) return CssLength{value * unit.factor, unit.unit};
    }
    return {};
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
