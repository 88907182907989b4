#include "tool_test.h"

#include <gmock/gmock.h>

using namespace ozm::test;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class ReportTool : public ToolTest {
protected:
    ReportTool() {
        Write("icons/a.svg", kTwoHalves);
        Write("icons/sub/b.svg", kTwoHalves);
    }
};

} // namespace

TEST_F(ReportTool, MakesOnePageOfAllIcons) {
    const Outcome outcome = Run("ozmira report icons");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "2 icons reported in report.html\n");
    EXPECT_EQ(Files(), "report.html");
    const std::string page = Read("report.html");
    EXPECT_TRUE(page.starts_with("<!doctype html>"));
    EXPECT_TRUE(page.ends_with("</html>\n"));
    for (const char* part : {"\"icons/a.svg\"", "\"icons/sub/b.svg\"", "\"data:image/png;base64,"})
        EXPECT_NE(page.find(part), std::string::npos) << part;
    EXPECT_EQ(Run("ozmira report icons -q -o - | cmp - report.html").exitCode, 0);
    EXPECT_EQ(Run("ozmira report icons -q -j 7 && ozmira report icons -q -j 1 -o one.html && "
                  "cmp report.html one.html")
                  .exitCode,
              0);
}

TEST_F(ReportTool, NamesWhatCannotBeDrawnInThePageToo) {
    Write("icons/c.svg", "<svg viewBox='0 0 1 1'>");
    const Outcome outcome = Run("ozmira report icons missing.svg --title 'Ours & theirs'");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.output, "4 icons reported in report.html, 2 files failed\n");
    const std::vector<std::string> errors = Lines(outcome.errors);
    ASSERT_EQ(errors.size(), 2u) << outcome.errors;
    EXPECT_THAT(errors[0], StartsWith("ozmira: icons/c.svg: "));
    EXPECT_THAT(errors[1], StartsWith("ozmira: missing.svg: "));
    const std::string page = Read("report.html");
    EXPECT_NE(page.find("\"title\":\"Ours & theirs\""), std::string::npos);
    for (const std::string& error : errors)
        EXPECT_NE(page.find(error.substr(error.rfind(": ") + 2)), std::string::npos) << error;
}

TEST_F(ReportTool, RefusesOutputsThatAreNoPages) {
    Write("notes.txt", "notes");
    const struct {
        const char* arguments;
        const char* problem;
    } cases[] = {
        {"icons -o icons", "is a folder; name a file in it"},
        {"icons/a.svg -o icons/a.svg", "has the name of a drawing"},
        {"icons -o ''", "the name is empty"},
        {"icons --scale 0", "--scale: \"0\" is not a number of pixels per point"},
        {"icons --fill sky", "--fill: \"sky\" is not a colour"},
        {"", "ICON"},
    };
    for (const auto& [arguments, problem] : cases) {
        const Outcome outcome = Run("ozmira report " + std::string(arguments));
        EXPECT_EQ(outcome.exitCode, 2) << arguments;
        EXPECT_THAT(outcome.errors, AllOf(HasSubstr(problem), HasSubstr("'ozmira report --help'")))
            << arguments;
    }
    const Outcome foreign = Run("ozmira report icons -o notes.txt");
    EXPECT_EQ(foreign.exitCode, 1);
    EXPECT_THAT(foreign.errors, HasSubstr("cannot write notes.txt: the file there is no page"));
    EXPECT_EQ(Files(), "notes.txt");
    EXPECT_EQ(Read("notes.txt"), "notes");
    EXPECT_EQ(Read("icons/a.svg"), kTwoHalves);
    EXPECT_THAT(Run("ozmira report icons -o missing/folder/page.html -q; ls missing/folder").output,
                HasSubstr("page.html"));
}
