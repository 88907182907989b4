#include <Ozmira/SVG/ozmSVGParser.h>

#include <gtest/gtest.h>

#include <string>

using namespace ozm;
using namespace std::string_view_literals;

TEST(StringView, CutsAndTrims) {
    const StringView text("\t\n\v\f\r a b \x1F "sv);
    EXPECT_EQ(text.TrimLeadingWhitespace(), "a b \x1F ");
    EXPECT_EQ(text.TrimTrailingWhitespace(), "\t\n\v\f\r a b \x1F");
    EXPECT_EQ(text.CutFront(text.length).data, text.end());
    EXPECT_EQ(text.CutFront(text.length + 1).data, nullptr);
    EXPECT_EQ(StringView().TrimLeadingWhitespace().TrimTrailingWhitespace().CutFront(0).length, 0u);
    EXPECT_TRUE(StringView("RgB(1").HasPrefixIgnoringCase("rgb("));
    EXPECT_FALSE(StringView("rg").HasPrefixIgnoringCase("rgb("));
    EXPECT_FALSE(StringView("\xD2\xC7\xC2(").HasPrefixIgnoringCase("rgb("));
}

TEST(ScanScientificNumber, EndsAfterTheNumber) {
    const struct {
        std::string_view text;
        uint64_t length;
    } cases[] = {
        {"  -1.5e-3,2", 9}, {"+.5", 3},  {"5.", 2},  {"5.e1", 4}, {"1E+07x", 5}, {"00012 ", 5},
        {"1.2.3", 3},       {"-1-2", 2}, {"1e", 0},  {"1ex", 0},  {"2E+x", 0},   {"2E+", 0},
        {"e5", 0},          {"   ", 0},  {"", 0},    {"+", 0},    {"-.", 0},     {".", 0},
        {"--1", 0},         {"- 1", 0},  {"inf", 0}, {"0x10", 1}, {"1\0002", 1}, {"1e5e5", 3},
    };
    for (const auto& [text, length] : cases) {
        // Digits follow the view; they must not be read.
        const std::string longer = std::string(text) + "99999999";
        const StringView scanned = ScanScientificNumber({longer.data(), text.size()});
        EXPECT_EQ(scanned.length, length) << text;
        EXPECT_EQ(scanned.data, longer.data()) << text;
    }
}

TEST(ParseDimension, ReadsNumberAndUnit) {
    using Unit = Dimension::Unit;
    constexpr auto kCase = SVGParser::UnitAttributeFormat::CaseSensitive;
    constexpr auto kNoCase = SVGParser::UnitAttributeFormat::CaseInsensitive;
    const struct {
        std::string_view text;
        SVGParser::UnitAttributeFormat format;
        double value;
        Unit unit;
    } cases[] = {
        {"5", kCase, 5, Unit::PX},         {"1.5em", kCase, 1.5, Unit::EM},
        {"-2px", kCase, -2, Unit::PX},     {"3in", kCase, 3, Unit::IN},
        {"3cm", kCase, 3, Unit::CM},       {"3mm", kCase, 3, Unit::MM},
        {"3pt", kCase, 3, Unit::PT},       {"3pc", kCase, 3, Unit::PC},
        {"50%", kCase, 50, Unit::Percent}, {"50%pt", kCase, 50, Unit::Percent},
        {"50 %", kCase, 50, Unit::PX},     {"12pcxyz", kCase, 12, Unit::PC},
        {"12q", kCase, 12, Unit::PX},      {"1e3", kCase, 1, Unit::PX},
        {"3MM", kCase, 3, Unit::PX},       {"3m", kCase, 3, Unit::PX},
        {"3 mm", kCase, 3, Unit::PX},      {".5.5", kCase, .5, Unit::PX},
        {"3MM", kNoCase, 3, Unit::MM},     {"3Em", kNoCase, 3, Unit::EM},
        {"50%", kNoCase, 50, Unit::PX},
    };
    for (const auto& [text, format, value, unit] : cases) {
        Dimension out;
        EXPECT_TRUE(SVGParser().ParseDimension(text, out, format)) << text;
        EXPECT_EQ(out.value, value) << text;
        EXPECT_EQ(out.unit, unit) << text;
    }
    for (const std::string_view text : {"", "-", ".", "-.", "+3", " 5", "px", "%", "nan", "- 5"}) {
        Dimension out{Unit::CM, 7};
        EXPECT_FALSE(SVGParser().ParseDimension(text, out, kCase)) << text;
        EXPECT_EQ(out, (Dimension{Unit::CM, 7})) << text;
    }
}

TEST(ParseViewBox, ReadsFourNumbersOrFallsBack) {
    const Rectf fallback{{0, 0}, {128, 128}};
    const struct {
        std::string_view text;
        Rectf box;
    } cases[] = {
        {"0 0 100 50", {{0, 0}, {100, 50}}},
        {"\t0\n0\v100 50 junk", {{0, 0}, {100, 50}}},
        {"0 0 -10 5", {{0, 0}, {-10, 5}}},
        {"1.5-2.5 3.25.5", {{1.5, -2.5}, {3.25, .5}}},
        {"1 2 3 4e5", {{1, 2}, {3, 4}}},
        {"0 0 100", fallback},
        {"0,0,10,10", fallback},
        {"0 0 1e2 5", fallback},
        {"0 0 +1 5", fallback},
        {"", fallback},
    };
    for (const auto& [text, box] : cases) {
        Rectf out{{9, 9}, {9, 9}};
        SVGParser().ParseViewBox(text, out);
        EXPECT_EQ(out, box) << text;
    }
}
