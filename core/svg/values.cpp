#include <Ozmira/SVG/ozmSVGParser.h>

#include "numbers/number_reader.h"

namespace ozm {
namespace {

struct UnitRow {
    std::string_view name;
    Dimension::Unit unit;
};

constexpr UnitRow sUnitTable[] = {
    {"em", Dimension::Unit::EM}, {"px", Dimension::Unit::PX},     {"in", Dimension::Unit::IN},
    {"cm", Dimension::Unit::CM}, {"mm", Dimension::Unit::MM},     {"pt", Dimension::Unit::PT},
    {"pc", Dimension::Unit::PC}, {"%", Dimension::Unit::Percent},
};

Dimension::Unit UnitOfSuffix(StringView suffix, SVGParser::UnitAttributeFormat format) {
    const bool caseSensitive = format == SVGParser::UnitAttributeFormat::CaseSensitive;
    for (const auto& [name, unit] : sUnitTable) {
        if (caseSensitive ? suffix.HasPrefix(name) : name != "%" && suffix.HasPrefixIgnoringCase(name))
            return unit;
    }
    return Dimension::Unit::PX;
}

} // namespace

bool SVGParser::ParseDimension(StringView text, Dimension& out, UnitAttributeFormat format) {
    double value;
    const char* const suffix = ReadDecimal(text.begin(), text.end(), value);
    if (!suffix) return false;
    out = {UnitOfSuffix(text.CutFront(static_cast<uint64_t>(suffix - text.data)), format), value};
    return true;
}

void SVGParser::ParseViewBox(StringView text, Rectf& out) {
    double numbers[4];
    const char* at = text.begin();
    for (double& number : numbers) {
        at = ReadDecimal(SkipWhitespace(at, text.end()), text.end(), number);
        if (!at) {
            out = {{0, 0}, {128, 128}};
            return;
        }
    }
    out = {{numbers[0], numbers[1]}, {numbers[2], numbers[3]}};
}

} // namespace ozm
