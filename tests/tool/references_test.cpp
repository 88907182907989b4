#include "tool_test.h"

#include <gmock/gmock.h>

using namespace ozm::test;
using testing::HasSubstr;

namespace {

class References : public ToolTest {
protected:
    Outcome Render(const std::string& content) const {
        Write("drawing.svg", "<svg viewBox='0 0 9 9'>" + content + "</svg>");
        return Run("timeout 60 '" OZMIRA_TOOL "' render drawing.svg -q");
    }
};

std::string Use(const std::string& id) { return "<use xlink:href='#" + id + "'/>"; }

std::string Repeat(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

/// Definitions of the groups g0 to g`levels`. g0 contains `content`; each other group refers ten times to the
/// previous.
std::string Tower(int levels, const std::string& content) {
    std::string tower = "<g id='g0'>" + content + "</g>";
    for (int i = 1; i <= levels; ++i) {
        tower +=
            "<g id='g" + std::to_string(i) + "'>" + Repeat(Use("g" + std::to_string(i - 1)), 10) + "</g>";
    }
    return "<defs>" + tower + "</defs>";
}

/// Definitions of a rectangle and `length` uses, each of the previous one. A use of u`length` draws the whole
/// chain.
std::string Chain(int length) {
    std::string chain = "<rect id='u0' width='1' height='1'/>";
    for (int i = 1; i <= length; ++i) {
        const std::string id = std::to_string(i);
        chain += "<use id='u" + id + "' xlink:href='#u" + std::to_string(i - 1) + "'/>";
    }
    return "<defs>" + chain + "</defs>";
}

} // namespace

TEST_F(References, InCyclesAreRefused) {
    const std::string kCases[] = {
        "<g id='a'>" + Use("a") + "</g>",
        "<use id='a' xlink:href='#a'/>",
        "<defs><g id='a'>" + Use("b") + "</g><g id='b'><g>" + Use("a") + "</g></g></defs>" + Use("b"),
        // An ancestor of the use.
        "<g id='a'><g><g opacity='.5'>" + Use("a") + "</g></g></g>",
        "<clipPath id='a'>" + Use("a") + "</clipPath><rect width='9' height='9' clip-path='url(#a)'/>",
        "<clipPath id='a'>" + Use("b") + "</clipPath><clipPath id='b'>" + Use("a") +
            "</clipPath><g style='clip-path:url(#b)'/>",
        // Clips are built even for elements that draw nothing.
        "<clipPath id='a'>" + Use("a") + "</clipPath><defs clip-path='url(#a)'/>",
    };
    for (const std::string& content : kCases) {
        const Outcome outcome = Render(content);
        EXPECT_EQ(outcome.exitCode, 1) << content;
        EXPECT_THAT(outcome.errors, HasSubstr("drawing.svg: its references form a cycle through \"#"))
            << content;
        EXPECT_EQ(Files(), "");
    }
}

TEST_F(References, InCyclesThatAreNeverDrawnDoNoHarm) {
    const std::string kCases[] = {
        "<defs><g id='a'>" + Use("a") + "</g></defs>",
        "<g id='a' display='none'>" + Use("a") + "</g>",
        "<g id='a' opacity='0'>" + Use("a") + "</g>",
        "<clipPath id='a'>" + Use("a") + "</clipPath>",
        "<clipPath id='a'>" + Use("a") + "</clipPath><rect width='9' height='9' fill='url(#a)'/>",
        // A clip path that is used draws nothing, and a group in one adds nothing to it.
        "<clipPath id='a'>" + Use("a") + "</clipPath>" + Use("a"),
        "<clipPath id='a'><g>" + Use("a") + "</g></clipPath><rect width='9' height='9' clip-path='url(#a)'/>",
        // An id refers to the first element that has it.
        "<rect id='a'/><g id='a'>" + Use("a") + "</g>",
        "<g id='a'>" + Use("b") + "</g>",
        // Properties of the shapes in a clip path are ignored.
        "<clipPath id='a'><rect width='9' height='9' clip-path='url(#a)'/></clipPath>"
        "<rect width='9' height='9' clip-path='url(#a)'/>",
    };
    for (const std::string& content : kCases) {
        const Outcome outcome = Render(content);
        EXPECT_EQ(outcome.exitCode, 0) << content << outcome.errors;
    }
}

TEST_F(References, ThatMultiplyAreRefused) {
    const std::string longPath = "<path d='M0 0" + Repeat("l1 1", 20000) + "'/>";
    const struct {
        std::string content;
        const char* error; ///< Empty: the drawing is accepted.
    } kCases[] = {
        {Tower(3, "<rect/>") + Use("g3"), ""},
        {Tower(7, "<rect/>") + Use("g7"), "draws more than 10,000,000 elements"},
        {Tower(40, "<rect/>") + Use("g40"), "draws more than 10,000,000 elements"},
        {Tower(40, "<rect/>"), ""},
        {Tower(7, "") + Use("g7"), "draws more than 10,000,000 elements"},
        {Tower(4, longPath) + Use("g4"), "draws more than 100,000,000 path segments"},
        {"<defs><clipPath id='c'>" + Repeat("<rect/>", 4000) + "</clipPath></defs>" +
             Repeat("<rect clip-path='url(#c)'/>", 4000),
         "draws more than 10,000,000 elements"},
        {Chain(1021) + Use("u1021"), ""},
        {Chain(1022) + Use("u1022"), "deeper than 1,024 levels"},
        {Chain(100000) + Use("u100000"), "deeper than 1,024 levels"},
        {Repeat("<g>", 1023) + Repeat("</g>", 1023), ""},
        {Repeat("<g>", 1024) + Repeat("</g>", 1024), "nests elements deeper than 1,024 levels"},
    };
    for (const auto& [content, error] : kCases) {
        SCOPED_TRACE(content.substr(0, 60) + " … " + error);
        const Outcome outcome = Render(content);
        EXPECT_EQ(outcome.exitCode, *error ? 1 : 0) << outcome.errors;
        EXPECT_THAT(outcome.errors, HasSubstr(error));
    }
}
