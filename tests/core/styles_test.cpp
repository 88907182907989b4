#include <Ozmira/SVG/ozmSVGParser.h>

#include "document_text.h"

#include <gtest/gtest.h>

using namespace ozm;
using test::ElementsText;

namespace {

/// The style of an empty path with the given attributes: its properties, and whether it is hidden.
std::string AttributeText(const std::string& attributes) {
    std::string text = ElementsText("<path d='' " + attributes + "/>").substr(std::string("Path ").size());
    text.pop_back();
    return text.starts_with(' ') ? text.substr(1) : text;
}

} // namespace

TEST(Styles, ReadEveryPresentationAttribute) {
    const struct {
        const char* attribute;
        const char* text;
    } cases[] = {
        {"fill='red'", "{FillColor=1,0,0,1}"},
        {"fill='none'", "{FillColor=0,0,0,0}"},
        {"fill='url(#g)'", "{FillURL=#g}"},
        {"stroke='#00f'", "{StrokeColor=0,0,1,1}"},
        {"fill-opacity='.5'", "{FillOpacity=0.5}"},
        {"stroke-opacity=' -1e1'", "{StrokeOpacity=-10}"},
        {"opacity='abc'", "{Opacity=0}"},
        {"opacity=''", "{Opacity=0}"},
        {"opacity='50%'", "{Opacity=50}"},
        {"stroke-width='2px'", "{StrokeWidth=2}"},
        {"stroke-width='1e3'", "{StrokeWidth=1}"},
        {"stroke-width='5.'", "{StrokeWidth=5}"},
        {"stroke-miterlimit='.5'", "{StrokeMiterLimit=0.5}"},
        {"stroke-dashoffset='1.5em'", "{StrokeDashOffset=1.5}"},
        {"fill-rule='nonzero'", "{FillRule=0}"},
        {"fill-rule='evenodd'", "{FillRule=1}"},
        {"clip-rule='evenodd'", "{ClipRule}"},
        {"stroke-linecap='butt'", "{StrokeLineCap=0}"},
        {"stroke-linecap='round'", "{StrokeLineCap=1}"},
        {"stroke-linecap='square'", "{StrokeLineCap=2}"},
        {"stroke-linejoin='miter'", "{StrokeLineJoin=0}"},
        {"stroke-linejoin='round'", "{StrokeLineJoin=1}"},
        {"stroke-linejoin='bevel'", "{StrokeLineJoin=2}"},
        {"clip-path='URL(#c)'", "{ClipPathURL=#c}"},
        {"display='none'", "hidden"},
        {"visibilityX='x' display='none'", "hidden"},
    };
    for (const auto& [attribute, text] : cases) EXPECT_EQ(AttributeText(attribute), text) << attribute;
}

TEST(Styles, IgnoreUnknownNamesAndValues) {
    for (const char* const attribute : {"fill='url(#)'",
                                        "fill='URL(#g)'",
                                        "fill=' url(#g)'",
                                        "fill='red '",
                                        "stroke='url(#g)'",
                                        "stroke-width='-1'",
                                        "stroke-width='+2'",
                                        "stroke-width=' 2'",
                                        "stroke-width='.'",
                                        "stroke-width='inherit'",
                                        "stroke-width=''",
                                        "fill-rule='evenodd '",
                                        "fill-rule='EvenOdd'",
                                        "clip-rule='x'",
                                        "stroke-linecap='miter'",
                                        "clip-path='none'",
                                        "display='NONE'",
                                        "visibility='hidden'",
                                        "stroke-dasharray='5,5'",
                                        "href='#a'",
                                        "Fill='red'",
                                        "styles='fill:red'",
                                        "display='none' visibility='hidden'",
                                        "visibility='visible' display='none'"}) {
        EXPECT_EQ(AttributeText(attribute), "") << attribute;
    }
}

TEST(Styles, ApplyAttributesInAFixedOrderAndDeclarationsLast) {
    EXPECT_EQ(
        AttributeText("clip-rule='evenodd' clip-path='url(#c)' opacity='.1' stroke-dashoffset='2' "
                      "stroke-miterlimit='3' stroke-linecap='butt' stroke-linejoin='miter' stroke-width='4' "
                      "stroke-opacity='.5' style='fill:blue;opacity:1' stroke='red' fill-rule='evenodd' "
                      "fill-opacity='.7' fill='red' fill='lime' style='fill:black'"),
        "{FillColor=1,0,0,1 FillOpacity=0.7 FillRule=1 StrokeColor=1,0,0,1 StrokeOpacity=0.5 StrokeWidth=4 "
        "StrokeLineJoin=0 StrokeLineCap=0 StrokeMiterLimit=3 StrokeDashOffset=2 Opacity=0.1 ClipPathURL=#c "
        "ClipRule FillColor=0,0,1,1 Opacity=1}");
}

TEST(Styles, ReadDeclarationLists) {
    const struct {
        const char* declarations;
        const char* text;
    } cases[] = {
        {"fill:red", "{FillColor=1,0,0,1}"},
        {" fill : red ; fill-rule:\tevenodd ;", "{FillColor=1,0,0,1 FillRule=1}"},
        {"fill:red;stroke", "{FillColor=1,0,0,1}"},
        {"fill:;stroke:red", ""},
        {"fill: ;opacity:1", "{Opacity=1}"},
        {"fill:red;;stroke:blue;opacity:1", "{FillColor=1,0,0,1 Opacity=1}"},
        {"fill:red !important;opacity:1", "{Opacity=1}"},
        {"fill:red;/*x*/opacity:1;opacity:2", "{FillColor=1,0,0,1 Opacity=2}"},
        {"fill:url(#a;b)", "{FillURL=#a}"},
        {"opacity:1:2", "{Opacity=1}"},
        {"display:none", "hidden"},
        {"display:none;visibilityX:1", ""},
        {"styles:fill:red;style2:stroke:red;opacity:1", "{FillColor=1,0,0,1 StrokeColor=1,0,0,1 Opacity=1}"},
        {"style:style:opacity:1;opacity:2", "{Opacity=1 Opacity=2}"},
        {"style:fill;style:style:;opacity:2", "{Opacity=2}"},
        {":red;opacity:1", "{Opacity=1}"},
        {"  ", ""},
    };
    for (const auto& [declarations, text] : cases) {
        EXPECT_EQ(AttributeText(std::string("style='") + declarations + "'"), text) << declarations;
    }
}

TEST(Styles, NestDeclarationsWithoutLimit) {
    std::string chain;
    for (int i = 0; i < 200000; ++i) chain += "style:";
    EXPECT_EQ(AttributeText("style='" + chain + "fill:red;opacity:1'"), "{FillColor=1,0,0,1 Opacity=1}");
}

TEST(Styles, ExistOnlyForElementsWithProperties) {
    const auto document = SVGParser().CreateDocumentWithSVGData(
        "<svg fill='red'><path d='' fill='x'/><g opacity='1'><path d='' fill='red'/></g></svg>");
    ASSERT_EQ(document->styles.size(), 2u);
    EXPECT_EQ(document->styles[0].name, "");
    EXPECT_EQ(document->elements[0].styleIndex, -1);
    EXPECT_EQ(document->elements[1].styleIndex, -1);
    EXPECT_EQ(document->elements[2].styleIndex, 1); // A container's style comes after those of its children.
    EXPECT_EQ(document->elements[3].styleIndex, 0);
}

TEST(ProcessStyleProperty, CanBeCalledAlone) {
    SVGParser parser;
    Element element(Element::Type::Path);
    Style style;
    element.hidden = true;
    parser.ProcessStyleProperty("visibilityAndMore", "?", element, style);
    EXPECT_FALSE(element.hidden);
    parser.ProcessStyleProperty("stylesheet", "fill:red;style:stroke:#fff;opacity:1", element, style);
    parser.ProcessStyleProperty("fill-rule ", "evenodd", element, style);
    parser.ProcessStyleProperty("clip-rule", "evenodd", element, style);
    EXPECT_EQ(test::Text(style), "FillColor=1,0,0,1 StrokeColor=1,1,1,1 Opacity=1 ClipRule");
    EXPECT_EQ(style.properties.back().keyword, 1u);
    EXPECT_TRUE(parser.ProcessCSSStylePropertyDeclarations("no declaration", element, style));
}

TEST(ParseCSSStylePropertyDeclaration, ReportsTheConsumedText) {
    const struct {
        const char* text;
        const char* name;
        const char* value;
        const char* consumed;
    } cases[] = {
        {" a : b ; c:d", "a", "b", " a : b ;"}, {"a:b", "a", "b", "a:b"}, {"a: ", "a", "", "a: "},
        {";a:b:c;", ";a", "b:c", ";a:b:c;"},    {":b", "", "b", ":b"},
    };
    for (const auto& [text, name, value, expected] : cases) {
        std::pair<StringView, StringView> declaration;
        StringView consumed;
        EXPECT_TRUE(SVGParser().ParseCSSStylePropertyDeclaration(text, declaration, consumed)) << text;
        EXPECT_EQ(declaration.first, name) << text;
        EXPECT_EQ(declaration.second, value) << text;
        EXPECT_EQ(consumed, expected) << text;
    }
    for (const std::string_view text : {"", " ", "a", "a:", "a:;b:c", "a;b"}) {
        std::pair<StringView, StringView> declaration{"x", "y"};
        StringView consumed = "z";
        EXPECT_FALSE(SVGParser().ParseCSSStylePropertyDeclaration(text, declaration, consumed)) << text;
        EXPECT_TRUE(declaration.first == "x" && declaration.second == "y" && consumed == "z") << text;
    }
}
