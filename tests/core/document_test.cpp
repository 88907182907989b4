#include <Ozmira/SVG/ozmSVGParser.h>

#include "document_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

using namespace ozm;

namespace {

std::string Parse(const char* svg) { return test::Text(*SVGParser().CreateDocumentWithSVGData(svg)); }

const char* const kEmptyDocument = "0,0,0,0 0px 0px\n";

} // namespace

TEST(Documents, TakeTheirSizeFromTheRoot) {
    const struct {
        const char* attributes;
        const char* text;
    } cases[] = {
        {"", "0,0,0,0 0px 0px"},
        {"viewBox='0 0 24 24'", "0,0,24,24 24pt 24pt"},
        {"viewBox='0 0 24 12' width='10'", "0,0,24,12 24pt 12pt"},
        {"viewBox='0 0 24 12' height='10'", "0,0,24,12 24pt 12pt"},
        {"width='10' height='20'", "0,0,10,20 10px 20px"},
        {"width='100%' height='2em'", "0,0,100,2 100% 2em"},
        {"width='10'", "0,0,0,0 0px 0px"},
        {"width='10mm' height='20' viewBox='1 2 3 4'", "1,2,3,4 10mm 20px"},
        {"width='x' height='20' viewBox='1 2 3 4'", "1,2,3,4 0px 20px"},
        {"viewBox='0,0,24,24'", "0,0,128,128 128pt 128pt"},
        {"viewBox=''", "0,0,128,128 128pt 128pt"},
        {"viewbox='0 0 24 24' x='1' y='2'", "0,0,0,0 0px 0px"},
        {"viewBox='0 0 1 1' viewBox='0 0 2 2'", "0,0,1,1 1pt 1pt"},
        {"id='a' transform='scale(2)' style='fill:red' display='none'", "0,0,0,0 0px 0px"},
    };
    for (const auto& [attributes, text] : cases) {
        const std::string svg = std::string("<svg ") + attributes + "/>";
        EXPECT_EQ(Parse(svg.c_str()), std::string(text) + "\nGroup\n") << attributes;
    }
}

TEST(Documents, ListElementsInPreOrderAndIDsInDocumentOrder) {
    EXPECT_EQ(
        Parse(
            "<?xml version='1.0'?><!DOCTYPE svg [<!ENTITY a 'b'>]><x/><svg>"
            "<g id='a'><circle id='b'/><x id='x'/></g>"
            "<symbol id='s'><circle id='t'/></symbol>"
            "<defs><linearGradient id='a'><stop id='u'/></linearGradient><clipPath id='c'><path d='' id=''/>"
            "</clipPath></defs><use id='d' xlink:href='#a&amp;'/></svg><svg><g/></svg>"),
        "0,0,0,0 0px 0px a=1 b=2 a=4 c=5 d=7\n"
        "Group 1 3 7\n"
        "Group 2 id=a\n"
        "Ellipse 0,0 0,0 id=b\n"
        "Defs 4 5\n"
        "Linear 0px,0px,0px,0px box Pad @0:0,0,0,1 id=a\n"
        "ClipPath 6 id=c\n"
        "Path \n"
        "Use 0,0 #a&amp; id=d\n");
}

TEST(Documents, AreEmptyForMalformedText) {
    for (const char* const text : {"",
                                   " \n",
                                   "x",
                                   "<",
                                   "<svg",
                                   "<svg>",
                                   "<svg><g></svg>x",
                                   "<svg a/>",
                                   "<svg a=b/>",
                                   "<svg a='/>",
                                   "<svg><!-- </svg>",
                                   "<svg/><",
                                   "<svg/>text",
                                   "<Svg/>",
                                   "<svgg/>",
                                   "<html><svg/></html>",
                                   "<!-- <svg/> -->",
                                   "<?svg",
                                   "<!DOCTYPE svg [",
                                   "\xFF\xFE<\0s\0v\0g\0",
                                   "<svg><g></g"}) {
        EXPECT_EQ(Parse(text), kEmptyDocument) << text;
    }
    EXPECT_EQ(Parse(nullptr), kEmptyDocument);
    EXPECT_EQ(Parse("\xEF\xBB\xBF<svg></anything >"), std::string(kEmptyDocument) + "Group\n");
}

TEST(Documents, LeaveParserAndTextUnchanged) {
    SVGParser parser{};
    Log log;
    parser.SetLog(&log);
    std::string text = "<svg><g id='&lt;'><x/></g><path d='M1 2&#10;' style='fill:?'/>\n</svg>";
    const std::string before = text;
    const auto document = parser.ParseSVGData(text.data());
    EXPECT_EQ(text, before);
    EXPECT_EQ(parser.document, nullptr);
    EXPECT_EQ(parser.nodeCount, 3u); // The root is not counted.
    EXPECT_TRUE(log.entries.empty());

    text.assign(text.size(), '#'); // The document owns copies.
    EXPECT_EQ(document->elements[1].id, "&lt;");
    EXPECT_EQ(document->definitions[0].id, "&lt;");

    parser.CreateDocumentWithSVGData("<svg><g></svg>x");
    EXPECT_EQ(parser.document, nullptr);
    EXPECT_EQ(parser.nodeCount, 0u);
    parser.CreateDocumentWithSVGData("<svg><g/></svg>");
    EXPECT_EQ(parser.nodeCount, 1u);
}

TEST(Documents, HoldManyElements) {
    std::string markup;
    for (int i = 0; i < 2000; ++i) markup += "<g id='g'><rect width='1' height='2' fill='red'/></g>";
    const auto document = SVGParser().CreateDocumentWithSVGData(("<svg>" + markup + "</svg>").c_str());
    ASSERT_EQ(document->elements.size(), 4001u);
    EXPECT_EQ(document->definitions.size(), 2000u);
    EXPECT_EQ(document->styles.size(), 2000u);
    EXPECT_EQ(document->elements[0].children.back(), 3999u);
    EXPECT_EQ(test::Text(*document, document->elements[4000]), "Rect 0,0,1,2,0,0 {FillColor=1,0,0,1}");
}

TEST(Operations, AddToTheirDocument) {
    Document document;
    SVGParser parser;
    parser.document = &document;
    EXPECT_EQ(parser.AddElement(Element::Type::Defs), 0u);
    EXPECT_EQ(parser.AddElement(Element::Type::Use), 1u);
    document.elements[0].children = {1};
    document.elements[1].id = "a";
    parser.AddDefinitions(1);
    parser.AddDefinitions(0);
    EXPECT_EQ(test::Text(document), "0,0,0,0 0px 0px a=1 a=1\nDefs 1\nUse 0,0 # id=a\n");

    rapidxml::xml_document<char> xml;
    char text[] = "<metadata><text id='b'/></metadata>";
    xml.parse<rapidxml::parse_fastest>(text);
    const XMLNode node(xml.first_node());
    constexpr uint64_t kNone = ~uint64_t{0};
    EXPECT_EQ(parser.ProcessMetadataNode(node), kNone);
    EXPECT_EQ(parser.ProcessTextNode(node), kNone);
    EXPECT_EQ(parser.ProcessSymbolNode(node), kNone);
    EXPECT_EQ(parser.ProcessPathNode(node), -1);
    EXPECT_EQ(parser.ProcessNode(node), kNone);
    EXPECT_EQ(parser.nodeCount, 1u);
    parser.ProcessIDAttribute(document.elements[1], node); // Keeps its id.
    parser.ProcessIDAttribute(document.elements[0], node.FirstChild());
    EXPECT_EQ(document.elements[1].id, "a");
    EXPECT_EQ(document.elements[0].id, "b");
    EXPECT_EQ(parser.ProcessLinkNode(node.FirstChild()), 2u);
}

// Within a document, path data may be read past its end, because markup follows. In any other tree, it may
// not.
TEST(Operations, DoNotReadPastPathDataOfOtherTrees) {
    const std::string svg = "<path d='M1 2 3 4 5 6 7 8 9 1 2 3 4 5 6 7 8 9'/>";
    const auto text = std::make_unique<char[]>(svg.size() + 1);
    std::copy(svg.begin(), svg.end(), text.get());
    rapidxml::xml_document<char> xml;
    xml.parse<rapidxml::parse_non_destructive>(text.get());
    Document document;
    SVGParser parser;
    parser.document = &document;
    EXPECT_EQ(parser.ProcessPathNode(XMLNode(xml.first_node())), 0);
    EXPECT_EQ(document.elements[0].path.commands.size(), 9u);
}
