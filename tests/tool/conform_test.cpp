#include "tool_test.h"

#include <gmock/gmock.h>

using namespace ozm::test;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

namespace {

constexpr const char* kSvg = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 9 9'>";

class ConformTool : public ToolTest {
protected:
    ConformTool() {
        Write("good.svg", kGood);
        Write("arc.svg", kArc);
        Write("set/sub/arc.svg", kArc);
        Write("set/text.svg", kText);
        Write("set/good.svg", kGood);
    }

    bool Exists(const std::string& name) const { return std::filesystem::exists(m_folder / name); }

    const std::string kGood = std::string(kSvg) + "<path d='M0 0h9v9z'/></svg>";
    const std::string kArc = std::string(kSvg) + "<path d='M0 0A9 9 0 0 1 9 9z'/></svg>";
    const std::string kText = std::string(kSvg) + "<path d='M0 0h9v9z'/><text>t</text><image/></svg>";
};

} // namespace

TEST_F(ConformTool, WritesAndRefuses) {
    const Outcome outcome = Run("ozmira conform set -o out");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.output, "2 files written to out, 1 of them rewritten, 1 file failed\n");
    EXPECT_THAT(outcome.errors,
                MatchesRegex("ozmira: set/text.svg:1:[0-9]+: warning: text .*\\[text\\].*\n"));
    EXPECT_EQ(Read("out/good.svg"), kGood);
    EXPECT_FALSE(Exists("out/text.svg"));
    EXPECT_THAT(Read("out/sub/arc.svg"), Not(HasSubstr("A9")));
    EXPECT_EQ(Run("ozmira check out").output, "0 of 2 files differ from a browser's picture\n");
    EXPECT_EQ(Run("ozmira conform out -o again && diff -r out again && echo same").output,
              "2 files written to again, 0 of them rewritten\nsame\n");
}

TEST_F(ConformTool, ReplacesFilesInPlace) {
    const Outcome outcome = Run("touch -d '2001-01-01' set/good.svg; ozmira conform set --in-place");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.output, "1 of 2 files rewritten, 1 file failed\n");
    EXPECT_EQ(Read("set/text.svg"), kText);
    EXPECT_NE(Read("set/sub/arc.svg"), kArc);
    EXPECT_EQ(Run("find set/good.svg -newermt 2002-01-01").output, ""); // Not touched.
}

TEST_F(ConformTool, SaysWhatItWouldDo) {
    const Outcome outcome = Run("ozmira conform set --dry-run");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("set/sub/arc.svg: would be rewritten for arc\n"));
    EXPECT_EQ(outcome.output, "1 of 2 files would be rewritten, 1 file failed\n");
    EXPECT_EQ(Read("set/sub/arc.svg"), kArc);
    Run("ozmira conform set -o out --dry-run");
    EXPECT_FALSE(Exists("out"));
}

TEST_F(ConformTool, LeavesOutOnRequest) {
    const Outcome outcome = Run("ozmira conform set/text.svg -o out.svg --lossy");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.errors, ContainsRegex("set/text.svg:1:[0-9]+: warning: text "));
    EXPECT_THAT(Read("out.svg"), Not(HasSubstr("<text")));
    EXPECT_EQ(Run("ozmira check out.svg").exitCode, 0);
}

TEST_F(ConformTool, KeepsCompressedDrawingsCompressed) {
    Run("ozmira conform arc.svg -o expected.svg; gzip < arc.svg > arc.svgz; gzip -1 < good.svg > good.svgz");
    EXPECT_EQ(Run("ozmira conform arc.svg arc.svgz good.svgz -o out/").output,
              "3 files written to out/, 2 of them rewritten\n");
    EXPECT_EQ(Read("out/arc.svg"), Read("expected.svg"));
    EXPECT_EQ(Run("gunzip < out/arc.svgz").output, Read("expected.svg"));
    EXPECT_EQ(Read("out/good.svgz"), Read("good.svgz")); // Byte for byte.
    Run("ozmira conform arc.svgz --in-place; ozmira conform good.svgz -o unpacked.svg");
    EXPECT_EQ(Run("gunzip < arc.svgz").output, Read("expected.svg"));
    EXPECT_EQ(Read("unpacked.svg"), kGood);
}

TEST_F(ConformTool, IsAFilter) {
    const Outcome outcome = Run("ozmira conform - < arc.svg");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.output, HasSubstr("<path"));
    EXPECT_EQ(Run("ozmira conform arc.svg -o -").output, outcome.output);
    EXPECT_EQ(outcome.errors, "");
}

TEST_F(ConformTool, TakesOptions) {
    Write("line.svg",
          std::string(kSvg) + "<path d='M1 1.23456q1 1 5 5' stroke='currentColor' fill='none'/></svg>");
    Run("ozmira conform line.svg -o one.svg --decimals 1 && ozmira conform line.svg -o five.svg --decimals "
        "5");
    EXPECT_THAT(Read("one.svg"), HasSubstr("M1 1.2"));
    EXPECT_THAT(Read("five.svg"), HasSubstr("M1 1.23456"));
    Run("ozmira conform line.svg -o outline.svg --outline-strokes");
    EXPECT_THAT(Read("outline.svg"), Not(HasSubstr("stroke")));
}
