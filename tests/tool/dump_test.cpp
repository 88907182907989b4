#include "tool_test.h"

#include <random>

using namespace ozm::test;

namespace {

class Dump : public ToolTest {
protected:
    std::string JSON(const std::string& drawing) const {
        Write("drawing.svg", drawing);
        const Outcome outcome = Run("ozmira dump --json drawing.svg");
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.errors, "");
        return outcome.output;
    }
};

/// The JSON of a document without a size. `children` are the root's; `after` are the elements after the root.
std::string Document(const std::string& definitions, const std::string& children, const std::string& after,
                     const std::string& styles) {
    return R"({"viewBox":[0,0,0,0],"size":{"width":{"unit":"PX","value":0},"height":{"unit":"PX","value":0}},)"
           R"("definitions":[)" +
           definitions +
           R"(],"elements":[{"type":"Group","id":"","transform":[1,0,0,1,0,0],"styleIndex":-1,)" +
           R"("hidden":false,"children":[)" + children + "]}" + (after.empty() ? "" : "," + after) +
           R"(],"styles":[)" + styles + "]}\n";
}

std::string ElementHead(const std::string& type, const std::string& id = "", int styleIndex = -1) {
    return R"({"type":")" + type + R"(","id":")" + id + R"(","transform":[1,0,0,1,0,0],"styleIndex":)" +
           std::to_string(styleIndex) + R"(,"hidden":false,)";
}

const char* const kEmptyDocument =
    R"({"viewBox":[0,0,0,0],"size":{"width":{"unit":"PX","value":0},"height":{"unit":"PX","value":0}},)"
    R"("definitions":[],"elements":[],"styles":[]})"
    "\n";

} // namespace

TEST_F(Dump, JSONHasEveryField) {
    const struct {
        std::string drawing, json;
    } kCases[] = {
        {"<svg/>", Document("", "", "", "")},
        {"<svg><g id='a'><rect x='1' y='2' width='3' height='4' rx='.5'/></g></svg>",
         Document(R"({"id":"a","elementIndex":1})", "1",
                  ElementHead("Group", "a") + R"("children":[2]},)" + ElementHead("Rect") +
                      R"("x":1,"y":2,"width":3,"height":4,"rx":0.5,"ry":0.5})",
                  "")},
        {"<svg><path d='M1 2 3 4L5 6 7 8C1 2 3 4 5 6z'/></svg>",
         Document("", "1",
                  ElementHead("Path") + R"("commands":[{"type":"MoveTo","point":[1,2]},)" +
                      R"({"type":"LineTo","points":[[3,4]]},{"type":"LineTo","points":[[5,6],[7,8]]},)" +
                      R"({"type":"CurveTo","curves":[{"end":[5,6],"control1":[1,2],"control2":[3,4]}]},)" +
                      R"({"type":"ClosePath"}]})",
                  "")},
        {"<svg><ellipse cx='1' cy='2' rx='3' ry='4'/><use x='5' y='-0.0' xlink:href='#no'/></svg>",
         Document("", "1,2",
                  ElementHead("Ellipse") + R"("center":[1,2],"radius":[3,4]},)" + ElementHead("Use") +
                      R"("position":[5,-0],"href":"no"})",
                  "")},
        {"<svg><defs/><clipPath/></svg>",
         Document("", "1,2",
                  ElementHead("Defs") + R"("children":[]},)" + ElementHead("ClipPath") + R"("children":[]})",
                  "")},
        {"<svg><radialGradient cx='25%' r='2mm' gradientUnits='userSpaceOnUse' spreadMethod='Repeat'>"
         "<stop offset='50%' stop-color='red' stop-opacity='.5'/></radialGradient></svg>",
         Document("", "1",
                  ElementHead("GradientElement") +
                      R"("gradient":{"type":"Radial","units":"UserSpaceOnUse","spreadMethod":"Repeat",)" +
                      R"("transform":[1,0,0,1,0,0],"stops":[{"offset":0.5,"color":[1,0,0,0.5]}],)" +
                      R"("x1":{"unit":"PX","value":0},"y1":{"unit":"PX","value":0},)" +
                      R"("x2":{"unit":"PX","value":0},"y2":{"unit":"PX","value":0},)" +
                      R"("cx":{"unit":"Percent","value":25},"cy":{"unit":"PX","value":0},)" +
                      R"("fx":{"unit":"Percent","value":25},"fy":{"unit":"PX","value":0},)" +
                      R"("r":{"unit":"MM","value":2}}})",
                  "")},
        {"<svg><g fill='none' fill-opacity='inf' fill-rule='evenodd' stroke='#f00' stroke-opacity='-inf' "
         "stroke-width='2' stroke-linejoin='bevel' stroke-linecap='round' stroke-miterlimit='3' "
         "stroke-dashoffset='1' opacity='nan' clip-path='url(#c)' style='fill:url(#f)'/></svg>",
         Document("", "1", ElementHead("Group", "", 0) + R"("children":[]})",
                  R"([{"type":"FillColor","color":[0,0,0,0]},{"type":"FillOpacity","number":"inf"},)"
                  R"({"type":"FillRule","keyword":"EvenOdd"},{"type":"StrokeColor","color":[1,0,0,1]},)"
                  R"({"type":"StrokeOpacity","number":"-inf"},{"type":"StrokeWidth","number":2},)"
                  R"({"type":"StrokeLineJoin","keyword":"Bevel"},{"type":"StrokeLineCap","keyword":"Round"},)"
                  R"({"type":"StrokeMiterLimit","number":3},{"type":"StrokeDashOffset","number":1},)"
                  R"({"type":"Opacity","number":"nan"},{"type":"ClipPathURL","url":"c"},)"
                  R"({"type":"FillURL","url":"f"}])")},
    };
    for (const auto& [drawing, json] : kCases) EXPECT_EQ(JSON(drawing), json) << drawing;
}

TEST_F(Dump, WritesNumbersAndStringsAsJSON) {
    // The text in the file, and the number or string in the JSON.
    const std::pair<std::string, std::string> kNumbers[] = {
        {"0.1", "0.1"},
        {"1e22", "1e+22"},
        {"1e-300", "1e-300"},
        {"100000", "1e+05"},
        {"-1.5e300", "-1.5e+300"},
        {"0.30000000000000004", "0.30000000000000004"},
        {"5e-324", "0"},
        {"1e999", "0"},
        {"123456789012345678", "123456789012345680"},
    };
    for (const auto& [text, json] : kNumbers) {
        EXPECT_NE(JSON("<svg><path d='M" + text + " 7'/></svg>").find("\"point\":[" + json + ",7]"),
                  std::string::npos)
            << text << JSON("<svg><path d='M" + text + " 7'/></svg>");
    }
    const std::string kReplacement = "\xEF\xBF\xBD";
    const std::pair<std::string, std::string> kIds[] = {
        {"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},
        {"a\"\\\t\x01", "a\\\"\\\\\\t\\u0001"},
        {"a\xFFz", "a" + kReplacement + "z"},
        {"\xC0\xAF", kReplacement + kReplacement},                    // overlong
        {"\xED\xA0\x80", kReplacement + kReplacement + kReplacement}, // surrogate
        {"\xF4\x90\x80\x80z", kReplacement + kReplacement + kReplacement + kReplacement + "z"},
        {"\xE2\x82z", kReplacement + "z"}, // An incomplete sequence becomes a single replacement character.
        {"\xF0\x9F\x98", kReplacement},
    };
    for (const auto& [text, json] : kIds) {
        EXPECT_NE(JSON("<svg><g id='" + text + "'/></svg>").find("\"id\":\"" + json + "\""),
                  std::string::npos)
            << text;
    }
}

TEST_F(Dump, AcceptsAnyBytes) {
    for (const char* text : {"", "x", "<svg", "<svg><g></svg>", "<html/>", "<SVG/>", "\xFF\xFE<"}) {
        EXPECT_EQ(JSON(text), kEmptyDocument) << text;
    }
    EXPECT_EQ(JSON(std::string("\0<svg/>", 7)), kEmptyDocument);
    EXPECT_EQ(JSON(std::string("<svg/>\0<<<", 10)), Document("", "", "", ""));
    std::mt19937 random(1);
    const std::string alphabet = "<>/'\"= svgpathd0123456789.-eMLCzrect#url()%;:\n\xC3\xFF";
    for (int i = 0; i < 60; ++i) {
        std::string text = "<svg>";
        for (int j = 0; j < 300; ++j) text += alphabet[random() % alphabet.size()];
        EXPECT_EQ(JSON(text).substr(0, 12), "{\"viewBox\":[") << text;
    }
    for (const std::string& nested :
         {std::string(2000000, '<'),
          std::string("<svg><rect style='") + std::string(600000, ' ') + "'/></svg>"}) {
        EXPECT_EQ(JSON(nested).substr(0, 12), "{\"viewBox\":[");
    }
    for (const auto& [command, error] :
         {std::pair("dump --json none.svg", "none.svg: no such file"),
          {"dump --json .", ".: a folder; name a file in it"},
          {"dump - <&-", "standard input: cannot be read"},
          {"dump <(head -c 70000000 /dev/zero)", ": larger than 64 MB"},
          {"dump <(head -c 4000001 /dev/zero | tr '\\0' '<')", ": has more than "}}) {
        const Outcome outcome = Run("ozmira " + std::string(command));
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_NE(outcome.errors.find(error), std::string::npos) << command << outcome.errors;
        EXPECT_EQ(outcome.output, "");
    }
}

TEST_F(Dump, TreeIsReadable) {
    Write("drawing.svg",
          "<svg viewBox='0 0 24 24'><linearGradient id='f' x2='100%'><stop offset='1'/></linearGradient>"
          "<g transform='scale(2)' display='none'><path d='M1 2L3 4z' fill='url(#f)' opacity='.5'/></g>"
          "<circle r='3'/><radialGradient cx='1' cy='2' fx='3' fy='4' r='5'/></svg>");
    EXPECT_EQ(Run("ozmira dump - < drawing.svg").output,
              "document 24 PT x 24 PT, view box 0 0 24 24\n"
              "0 Group\n"
              "  1 GradientElement #f\n"
              "      Linear x1 0 PX y1 0 PX x2 100% y2 0 PX, ObjectBoundingBox, Pad\n"
              "      stop 1 rgba(0 0 0 1)\n"
              "  2 Group hidden matrix(2 0 0 2 0 0)\n"
              "    3 Path [FillURL #f, Opacity 0.5]\n"
              "        MoveTo 1 2\n"
              "        LineTo (3 4)\n"
              "        ClosePath\n"
              "  4 Ellipse center 0 0 radius 3 3\n"
              "  5 GradientElement\n"
              "      Radial cx 1 PX cy 2 PX fx 3 PX fy 4 PX r 5 PX, ObjectBoundingBox, Pad\n");
    Write("bad.svg", "<svg>\n  <g a=b></g></svg>");
    EXPECT_EQ(Run("ozmira dump bad.svg").output,
              "document 0 PX x 0 PX, view box 0 0 0 0\n(no elements)\n"
              "(not well-formed XML: expected ' or \" at line 2, column 8; correct it there)\n");
}
