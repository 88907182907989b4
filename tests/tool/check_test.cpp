#include "tool_test.h"

#include <gmock/gmock.h>

using namespace ozm::test;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace {

constexpr const char* kSvg = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 9 9'>";

class CheckTool : public ToolTest {
protected:
    CheckTool() {
        Write("good.svg", std::string(kSvg) + "<path d='M0 0h9v9z'/></svg>");
        Write("arc.svg", std::string(kSvg) + "\n <path d='M0 0\n  A9 9 0 0 1 9 9z'/></svg>");
        Write("set/arcs.svg",
              std::string(kSvg) + "<path d='M0 0A9 9 0 0 1 9 9z'/><path d='M0 0a9 9 0 0 1 9 9'/></svg>");
        Write("set/text.svg", std::string(kSvg) + "<text>t</text></svg>");
        Write("bad.svg", "<svg>");
    }
};

} // namespace

TEST_F(CheckTool, NamesPlaceRuleAndRemedy) {
    Outcome outcome = Run("ozmira check good.svg");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output, "");
    outcome = Run("ozmira check arc.svg");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_THAT(outcome.output, MatchesRegex("arc.svg:3:3: warning: .*arc.*; .*curves \\[arc\\]\n"));
    EXPECT_EQ(Run("ozmira check - < arc.svg").output, "standard input" + outcome.output.substr(7));
}

TEST_F(CheckTool, SumsUpSeveralFilesByRule) {
    const Outcome outcome = Run("ozmira check set good.svg none.svg");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, MatchesRegex("ozmira: none.svg: no such file.*\n"));
    EXPECT_THAT(outcome.output, HasSubstr("\n3 of 4 files differ from a browser's picture\n"));
    EXPECT_THAT(outcome.output, ContainsRegex("\n  1 file, 2 places +arc: "));
    EXPECT_THAT(outcome.output, ContainsRegex("\n  1 file, 1 place +text: "));
}

TEST_F(CheckTool, PrintsJSON) {
    const Outcome outcome = Run("ozmira check --json good.svg arc.svg none.svg");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_THAT(
        outcome.output,
        MatchesRegex(
            R"(\[\{"file":"good.svg","findings":\[\]\},\{"file":"arc.svg","findings":\[)"
            R"(\{"line":3,"column":3,"rule":"arc","severity":"warning","message":".*","remedy":".*"\})"
            R"(\]\},\{"file":"none.svg","findings":\[)"
            R"(\{"line":1,"column":1,"rule":"unreadable","severity":"error","message":"no such file.*")"
            R"(,"remedy":".*"\}\]\}\])"
            "\n"));
}

TEST_F(CheckTool, PrintsGitHubsAnnotations) {
    Write("a,b.svg", Read("arc.svg"));
    EXPECT_THAT(Run("ozmira check --github a,b.svg good.svg").output,
                MatchesRegex("::warning file=a%2Cb.svg,line=3,col=3,title=ozmira arc::[^\n]*arc[^\n]*\n"));
    EXPECT_THAT(Run("ozmira check --github bad.svg").output,
                testing::StartsWith("::error file=bad.svg,line=1,"));
}

TEST_F(CheckTool, PrintsASARIFLog) {
    Write("sub/ü 1.svg", Read("arc.svg"));
    const Outcome outcome = Run("ozmira check --sarif sub bad.svg none.svg");
    EXPECT_EQ(outcome.exitCode, 1);
    for (const char* part :
         {R"("version":"2.1.0")", R"("uri":"sub/%C3%BC%201.svg")", R"("startLine":3,"startColumn":3)",
          R"("ruleId":"unreadable")", R"("columnKind":"unicodeCodePoints")"}) {
        EXPECT_THAT(outcome.output, HasSubstr(part));
    }
    if (Run("python3 -c 'import json'").exitCode != 0) return;
    const char* const script = R"(import json, sys
run = json.load(sys.stdin)["runs"][0]
rules = run["tool"]["driver"]["rules"]
assert len(rules) == len({rule["id"] for rule in rules}) > 10
for result in run["results"]: assert rules[result["ruleIndex"]]["id"] == result["ruleId"], result
)";
    Write("check.py", script);
    EXPECT_EQ(Run("ozmira check --sarif sub set bad.svg none.svg | python3 check.py").errors, "");
}

TEST_F(CheckTool, PrintsSARIFThatIsValid) {
    if (Run("python3 -c 'import jsonschema'").exitCode != 0) GTEST_SKIP() << "needs python3-jsonschema";
    Write("sub/ü 1.svg", Read("arc.svg"));
    Write("validate.py", "import json, sys, jsonschema\n"
                         "jsonschema.validate(json.load(sys.stdin), json.load(open(sys.argv[1])))\n");
    // The schema of the format itself can be named, too.
    const char* const whole = std::getenv("OZMIRA_SARIF_SCHEMA");
    for (const char* const schema : {OZMIRA_SARIF_SUBSET, whole}) {
        if (!schema) continue;
        for (const char* const files : {"good.svg", "sub set bad.svg none.svg"}) {
            SCOPED_TRACE(files);
            EXPECT_EQ(
                Run(std::string("ozmira check --sarif ") + files + " | python3 validate.py '" + schema + "'")
                    .errors,
                "");
        }
    }
    EXPECT_NE(Run(std::string("echo '{}' | python3 validate.py '") + OZMIRA_SARIF_SUBSET + "'").exitCode, 0);
}

TEST_F(CheckTool, ListsTheRules) {
    const Outcome outcome = Run("ozmira check --rules");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.output, HasSubstr("\ntext (warning, not rewritten)\n    text is left out; "));
    EXPECT_THAT(Run("ozmira check --rules --json").output,
                HasSubstr(R"({"rule":"arc","severity":"warning",)"));
}

TEST_F(CheckTool, RenderTellsWhatDiffers) {
    Outcome outcome = Run("ozmira render arc.svg");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(
        outcome.errors,
        MatchesRegex("arc.svg: warning: the picture is blank, .*\narc.svg:3:3: warning: .*\\[arc\\]\n"));
    EXPECT_THAT(outcome.output,
                HasSubstr("1 of 1 drawing differs from a browser's picture: 1 arc\n'ozmira check arc.svg' "));
    outcome = Run("ozmira render good.svg --strict");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output, "1 picture written to the current folder\n");
    outcome = Run("ozmira render set good.svg -o out/ --strict");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors,
                MatchesRegex("set/arcs.svg: warning: .* blank, .*\nset/text.svg: .* blank, .*\n"));
    EXPECT_THAT(outcome.output, HasSubstr("2 of 3 drawings differ from a browser's picture: 1 arc, 1 text\n"
                                          "'ozmira check set good.svg' tells where"));
    outcome = Run("ozmira render set -o out/ --quiet");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output + outcome.errors, "");
}

TEST_F(CheckTool, RenderDrawsWhatConformWouldWrite) {
    Run("ozmira conform arc.svg -o rewritten.svg && ozmira render rewritten.svg -o a.png");
    Outcome outcome = Run("ozmira render arc.svg -o b.png --conform");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(Read("a.png"), Read("b.png"));
    outcome = Run("ozmira render set -o out/ --conform");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, MatchesRegex("ozmira: set/text.svg:1:[0-9]+: warning: .*\\[text\\].*\n"));
    EXPECT_EQ(Files(), "a.png b.png out/arcs.png");
}
