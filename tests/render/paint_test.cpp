// Styles that the parser does not produce, gradients that cannot be created, and lists of stops.

#include "drawing.h"

#include <gmock/gmock.h>

using namespace ozm;
using testing::HasSubstr;
using Type = StyleProperty::Type;

namespace {

/// The calls for a group with the style `outer` that contains one with the style `inner`.
std::string styled(std::vector<StyleProperty> outer, std::vector<StyleProperty> inner = {}) {
    Drawing drawing("<g fill='red'><g fill='red'/></g>");
    drawing.document->styles[0].properties =
        std::move(inner); // The parser stores the inner element's style first.
    drawing.document->styles[1].properties = std::move(outer);
    return drawing.renderChildren();
}

StyleProperty dashArray(std::vector<double> lengths) {
    StyleProperty property(Type::StrokeDashArray);
    property.dashArray = std::move(lengths);
    return property;
}

StyleProperty dashOffset(double offset) {
    StyleProperty property(Type::StrokeDashOffset);
    property.number = offset;
    return property;
}

StyleProperty keyword(Type type, uint32_t value) {
    StyleProperty property(type);
    property.keyword = value;
    return property;
}

} // namespace

TEST(PaintTest, AppliesStylesThatTheParserDoesNotProduce) {
    const struct {
        const char* name;
        std::vector<StyleProperty> outer, inner;
        const char *outerCalls, *innerCalls;
    } cases[] = {
        {"dashes, then the same dashes",
         {dashArray({1, 2}), dashOffset(3)},
         {dashArray({1, 2})},
         "SetLineDash 3 data [1 2]; ",
         ""},
        {"a longer list, then yet another",
         {dashArray({1})},
         {dashArray({1, 2}), dashArray({1, 3})},
         "SetLineDash 0 data [1]; ",
         "SetLineDash 0 data [1 3]; "},
        {"solid again, but with the same phase",
         {dashArray({1}), dashOffset(3)},
         {dashArray({})},
         "SetLineDash 3 data [1]; ",
         "SetLineDash 3 null []; "},
        {"keywords out of range are sent as 0",
         {keyword(Type::StrokeLineCap, 7), keyword(Type::StrokeLineJoin, 3)},
         {keyword(Type::StrokeLineCap, 7)},
         "SetLineCap 0; SetLineJoin 0; ",
         ""},
        {"an unknown type", {StyleProperty(static_cast<Type>(15))}, {}, "", ""},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(styled(row.outer, row.inner),
                  lines("SaveGState; " + std::string(row.outerCalls) + "SaveGState; " + row.innerCalls +
                        "RestoreGState; RestoreGState"));
    }
}

TEST(PaintTest, TriesAFailingGradientOnceAndFillsNothing) {
    Drawing drawing("<circle r='1' fill='url(#g)' stroke='red'/><linearGradient id='g'/>");
    recording::state.createsGradients = false;
    const std::string create = "GradientCreateWithColorComponents colorSpace1 [] [] 0\n";
    const std::string stroked = lines("SaveGState; SetStrokeColor [1 0 0 1]; AddEllipseInRect [-1 -1 2 2]; "
                                      "DrawPath 2; RestoreGState; SaveGState; RestoreGState");
    std::string first = drawing.renderChildren();
    ASSERT_THAT(first, HasSubstr(create));
    EXPECT_EQ(first.erase(first.find(create), create.size()), stroked);
    EXPECT_EQ(drawing.renderChildren(), stroked);
}

TEST(PaintTest, PassesStopsOfAnyNumberOnUnchanged) {
    recording::reset();
    const CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    for (const size_t count : {0U, 16U, 17U, 1000U}) {
        std::vector<Gradient::Stop> stops;
        std::string components, locations;
        for (size_t i = 0; i < count; ++i) {
            const auto number = static_cast<double>(i);
            stops.push_back({-number, {number, 1, 2, 3}});
            components.append(i ? " " : "").append(std::to_string(i)).append(" 1 2 3");
            locations.append(i ? " -" : "").append(std::to_string(i));
        }
        recording::takeCalls();
        EXPECT_NE(CGGradientCreateWithGradientStopList(stops, space), nullptr);
        EXPECT_EQ(recording::takeCalls(), "GradientCreateWithColorComponents colorSpace1 [" + components +
                                              "] [" + locations + "] " + std::to_string(count) + "\n");
    }
}
