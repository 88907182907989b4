#include "tool_test.h"

#include <gmock/gmock.h>

using namespace ozm::test;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class Usage : public ToolTest {
protected:
    Usage() {
        for (const char* name : {"a.svg", "b.svg", "folder/c.svg"}) Write(name, kTwoHalves);
        Write("file", kTwoHalves);
    }
};

} // namespace

TEST_F(Usage, ErrorsAreOneLineThatNamesWhatIsAccepted) {
    const struct {
        const char* arguments;
        const char* message; ///< A regular expression.
    } kCases[] = {
        {"", "a command is missing: render, check, conform, report, catalogue, diff, info or dump"},
        {"--bogus", "--bogus"},
        {"draw a.svg",
         "there is no command \"draw\"; there are render, check, conform, report, catalogue, diff, "
         "info or dump; see"},
        {"rendr a.svg", "there is no command \"rendr\"; did you mean render\\?"},
        {"ifno a.svg", "did you mean info\\?"},
        {"render a.svg --widht 3", "there is no option --widht; did you mean --width\\?"},
        {"render a.svg --hieght=3", "there is no option --hieght=3; did you mean --height\\?"},
        {"render a.svg --scale 1 --scale 2", "--scale: given more than once; give it once"},
        {"render a.svg out.png", "\"out.png\" is no drawing; to write the picture there, put -o before it"},
        {"render", "ICON is required"},
        {"info", "FILE is required"},
        {"dump", "FILE is required"},
        {"dump a.svg b.svg", "b.svg"},
        {"render a.svg --bogus", "--bogus; see 'ozmira render --help'"},
        {"render a.svg --width", "--width"},
        {"render a.svg --width 0", "--width: \"0\" is not a length .* above 0 and up to 32767"},
        {"render a.svg --width -5", "--width: \"-5\" is not a length"},
        {"render a.svg --width nan", "--width: \"nan\" is not a length"},
        {"render a.svg --width inf", "--width: \"inf\" is not a length"},
        {"render a.svg --width abc", "--width: \"abc\" is not a length"},
        {"render a.svg --width 24px", "--width: \"24px\" is not a length"},
        {"render a.svg --width ''", "--width: \"\" is not a length"},
        {"render a.svg --width 1e9", "--width: \"1e9\" is not a length"},
        {"render a.svg --height 0", "--height: \"0\" is not a length"},
        {"render a.svg --height 32768", "--height: \"32768\" is not a length"},
        {"render a.svg --scale 0", "--scale: \"0\" is not a number of pixels per point from 0.01 to 100"},
        {"render a.svg --scale -1", "--scale: \"-1\""},
        {"render a.svg --scale nan", "--scale: \"nan\""},
        {"render a.svg --scale 1e9", "--scale: \"1e9\""},
        {"render a.svg --scale 1,abc", "--scale: \"abc\""},
        {"render a.svg --scale 1,,2", "--scale: \"\""},
        {"render a.svg --scale 1,2,1", "--scale: 1 is listed twice"},
        {"render a.svg -j 0", "-j: \"0\" is not a whole number of threads from 1 to 256"},
        {"render a.svg -j 1.5", "-j: \"1.5\""},
        {"render a.svg -j 257", "-j: \"257\""},
        {"render a.svg --timeout -1",
         "--timeout: \"-1\" is not a number of seconds from 0 to 86400; 0 sets no"},
        {"render a.svg --fill Reddish", "--fill: \"Reddish\" is not a colour; write #rgb, .*steelblue"},
        {"render a.svg --fill '#12345'", "--fill: \"#12345\" is not a colour; write #rgb, #rgba, #rrggbb"},
        {"render a.svg --fill '#1234567'", "--fill: .* is not a colour"},
        {"render a.svg --fill '#12'", "--fill: .* is not a colour"},
        {"render a.svg --fill '#ff00zz'", "--fill: .* is not a colour"},
        {"render a.svg --fill 'rgb(255,0,0)x'", "--fill: .* is not a colour"},
        {"render a.svg --fill 'rgb(300,0,0)'", "--fill: .* is not a colour"},
        {"render a.svg --fill nonesuch", "--fill: .* is not a colour"},
        {"render a.svg --fill 'url(#a)'", "--fill: .* is not a colour"},
        {"render a.svg --fill \"$(printf 'a\\nb')\"", "--fill: \"a\\\\x0Ab\" is not a colour"},
        {"render a.svg -o ''", "-o: the name is empty"},
        {"render a.svg b.svg -o -", "standard output can hold one picture only"},
        {"render a.svg --scale 1,2 -o -", "standard output can hold one picture only"},
        {"check", "FILE is required"},
        {"check --json --sarif a.svg", "--"},
        {"check --github --rules", "--"},
        {"render file -o ./file", "file\" is the file to draw; choose another name"},
        {"conform", "FILE is required"},
        {"conform a.svg", "say where to write with -o PATH, or write --in-place"},
        {"conform a.svg -o b.svg --in-place", "--in-place"},
        {"conform a.svg -o .", "a.svg\" is a file to rewrite; choose another folder, or --in-place"},
        {"conform a.svg -o a.svg", "a.svg\" is the file to "},
        {"conform folder -o folder", "c.svg\" is a file to rewrite"},
        {"conform - --in-place", "standard input \\(-\\) has no place"},
        {"conform a.svg -o out --decimals 13", "--decimals: \"13\" is not a whole number from 0 to 12"},
        {"catalogue", "ICON is required"},
        {"catalogue folder", "say where to write with -o NAME.xcassets"},
        {"catalogue folder -o Icons", "-o: \"Icons\" is no asset catalogue; end its name with .xcassets"},
        {"catalogue - -o a.xcassets", "standard input \\(-\\) has no name for an asset"},
        {"catalogue folder -o a.xcassets --height 0", "--height: \"0\" is not a length"},
        {"diff folder", "NEW is required"},
        {"diff folder nowhere", "\"nowhere\" does not exist"},
        {"diff folder a.svg", "name two folders, or two files"},
        {"diff folder folder --threshold 256", "--threshold: \"256\" is not a mean difference .* 0 to 255"},
        {"diff folder folder --scale 1,2", "--scale: \"1,2\" is not a number of pixels per point"},
        {"render - -", "standard input .* only once"},
        {"render a.svg b.svg -o new.png", "new.png\" can hold one picture only"},
        {"conform a.svg b.svg -o new.svgz", "new.svgz\" can hold one drawing only"},
        {"render a.svg b.svg -o file", "file\" is a file, and several pictures need a folder"},
        {"render folder -o file", "file\" is a file"},
        {"render a.svg -o ./a.svg", "a.svg\" has the name of a drawing"},
    };
    for (const auto& [arguments, message] : kCases) {
        SCOPED_TRACE(arguments);
        const Outcome outcome = Run("ozmira " + std::string(arguments));
        EXPECT_EQ(outcome.exitCode, 2);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(Lines(outcome.errors).size(), 1u) << outcome.errors;
        EXPECT_THAT(outcome.errors, ContainsRegex("^ozmira: .*" + std::string(message)));
    }
    EXPECT_EQ(Files(), "file");
    EXPECT_EQ(Read("a.svg"), kTwoHalves);
}

TEST_F(Usage, EveryHelpHasExamples) {
    for (const std::string command :
         {"", "render", "check", "conform", "report", "catalogue", "diff", "info", "dump"}) {
        const Outcome outcome = Run("ozmira " + command + " --help");
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.errors, "");
        EXPECT_THAT(outcome.output, HasSubstr("Examples:\n  ozmira " + command));
        for (const std::string& line : Lines(outcome.output)) EXPECT_LE(line.size(), 80u) << line;
    }
    EXPECT_THAT(Run("ozmira render --help").output,
                HasSubstr("at most 32,767 pixels on a side and 100,000,000 in all"));
    EXPECT_THAT(Run("ozmira --version").output, StartsWith("ozmira " OZMIRA_VERSION "\n"));
}
