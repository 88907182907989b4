// Faults outside the drawings: memory, time, files, signals and terminals.
#include "tool_test.h"

#include <gmock/gmock.h>

#include <algorithm>

using namespace ozm::test;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

namespace {

class Faults : public ToolTest {
protected:
    Faults() { Write("a.svg", kTwoHalves); }

    /// The number of files in a folder. Checks that each is a complete PNG file.
    size_t CompletePictures(const std::string& folder) const {
        size_t count = 0;
        if (!fs::exists(m_folder / folder)) return 0;
        for (const auto& entry : fs::directory_iterator(m_folder / folder)) {
            const std::string file = entry.path().filename().string();
            EXPECT_EQ(entry.path().extension(), ".png") << file;
            EXPECT_THAT(Read(folder + "/" + file), testing::EndsWith("IEND\xAE\x42\x60\x82"));
            ++count;
        }
        return count;
    }
    /// Runs the tool on a terminal. The outcome's `output` holds what both streams print.
    Outcome RunOnTerminal(const std::string& arguments, int columns = 80) const {
        return Run("export tool='" OZMIRA_TOOL "'; script -qec 'stty cols " + std::to_string(columns) +
                   "; rm -rf out; \"$tool\" " + arguments + "' /dev/null");
    }
};

} // namespace

#ifndef OZMIRA_SANITIZED // The sanitizers themselves need more memory than any of the limits.
TEST_F(Faults, LackOfMemoryIsReportedForEachFile) {
    constexpr int kFiles = 6;
    std::string files;
    for (int i = 0; i < kFiles; ++i) {
        Write(std::to_string(i) + ".svg",
              "<svg viewBox='0 0 9 9'><circle r='" + std::to_string(i + 1) + "'/></svg>");
        files += " " + std::to_string(i) + ".svg";
    }
    size_t least = kFiles, most = 0;
    for (const int megabytes : {1000, 250, 150, 100, 60, 32}) {
        SCOPED_TRACE(megabytes);
        const Outcome outcome = Run("ulimit -v " + std::to_string(megabytes * 1024) +
                                    "; ozmira render -o out/ --width 3000 -j 2" + files);
        const size_t drawn = CompletePictures("out");
        least = std::min(least, drawn);
        most = std::max(most, drawn);
        EXPECT_EQ(outcome.exitCode, drawn == kFiles ? 0 : 1);
        const auto lines = Lines(outcome.errors);
        EXPECT_EQ(lines.size(), kFiles - drawn);
        for (const std::string& line : lines)
            EXPECT_THAT(line,
                        testing::MatchesRegex("ozmira: [0-5].svg: there is not enough memory for it; .*"));
        Run("rm -rf out");
    }
    EXPECT_EQ(least, 0u); // The limits range from too little memory for any file to enough for all.
    EXPECT_EQ(most, size_t{kFiles});
}

TEST_F(Faults, LackOfMemoryIsReportedByEveryCommandThatWrites) {
    std::string arcs = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 9 9'>";
    for (int i = 0; i < 100'000; ++i) arcs += "<path d='M0 0A9 9 0 0 1 9 9z'/>";
    Write("arcs.svg", arcs + "</svg>");
    for (const std::string command : {"conform arcs.svg -o x.svg", "render arcs.svg --conform",
                                      "catalogue arcs.svg -o x.xcassets", "diff arcs.svg a.svg"}) {
        EXPECT_THAT(Run("ulimit -v 60000; ozmira " + command + " -j 1").errors,
                    testing::MatchesRegex("ozmira: arcs.svg: [^\n]*memory[^\n]*; [^\n]*\n"))
            << command;
    }
}
#endif

TEST_F(Faults, DrawingsThatTakeTooLongAreAbandoned) {
    std::string slow = "<svg viewBox='0 0 9 9'>";
    for (int i = 0; i < 100'000; ++i) slow += "<rect width='9' height='9' opacity='.5'/>";
    Write("slow.svg", slow + "</svg>");
    std::string path = "<svg viewBox='0 0 9 9'><path d='M0 0";
    for (int i = 0; i < 100'000; ++i) path += "L9 9L0 0";
    Write("one-path.svg", path + "'/></svg>");
    for (const std::string file : {"slow.svg", "one-path.svg"}) {
        const Outcome outcome = Run("ozmira render " + file + " -o out/ --width 2000 --timeout 0.1");
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_THAT(outcome.errors,
                    testing::StartsWith("ozmira: " + file + ": takes more than 0.1 s to draw; choose a"));
        EXPECT_EQ(CompletePictures("out"), 0u);
    }
    EXPECT_EQ(Run("ozmira render slow.svg -o out/ --width 9 --timeout 0").exitCode, 0);
    EXPECT_EQ(CompletePictures("out"), 1u);
}

TEST_F(Faults, FilesThatChangeWhileTheyAreReadDoNoHarm) {
    Write("long.svg",
          "<svg viewBox='0 0 9 9'>" + std::string(300'000, ' ') + "<rect width='9' height='9'/></svg>");
    const Outcome outcome =
        Run("while :; do cat long.svg > b.svg; cat a.svg > b.svg; done & "
            "for i in {1..40}; do ozmira render b.svg -o out/$i.png -q; echo $?; done; kill $!");
    EXPECT_EQ(CompletePictures("out"), static_cast<size_t>(std::ranges::count(Lines(outcome.output), "0")));
    for (const std::string& code : Lines(outcome.output)) EXPECT_THAT(code, testing::AnyOf("0", "1"));
    for (const std::string& line : Lines(outcome.errors)) EXPECT_THAT(line, StartsWith("ozmira: b.svg: "));
}

TEST_F(Faults, PicturesThatExceedTheFileSizeLimitAreReported) {
    Write("big.svg", "<svg viewBox='0 0 9 9'><circle cx='4' cy='5' r='4' stroke='red' opacity='.6'/></svg>");
    const Outcome outcome = Run("ulimit -f 1; ozmira render big.svg --width 500 -o out/big.png");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.errors,
              "ozmira: big.svg: cannot write out/big.png: File too large; allow larger files (ulimit -f)\n");
    EXPECT_EQ(Files(), "");
}

TEST_F(Faults, TerminalsShowProgressButNoPictures) {
    Write("b.svg", kTwoHalves);
    const Outcome progress = RunOnTerminal("render a.svg b.svg -o out/");
    EXPECT_EQ(progress.exitCode, 0);
    EXPECT_THAT(progress.output, StartsWith("\r\x1B[K[###############...............] 1/2"));
    EXPECT_THAT(progress.output, testing::EndsWith("\r\x1B[K2 pictures written to out/\r\n"));
    EXPECT_THAT(RunOnTerminal("render a.svg b.svg -qo out/").output, "");
    const Outcome picture = RunOnTerminal("render - < a.svg");
    const std::pair<int, std::string> kWidths[] = {{20, "\r\x1B[K[######.......] 1/2"},
                                                   {12, "\r\x1B[K[##...] 1/2"},
                                                   {11, "\r\x1B[K1/2"},
                                                   {3, "\r\x1B[K2 pictures"}};
    for (const auto& [columns, line] : kWidths) {
        EXPECT_THAT(RunOnTerminal("render a.svg b.svg -o out/", columns).output, StartsWith(line)) << columns;
    }
    EXPECT_EQ(picture.exitCode, 2);
    EXPECT_THAT(picture.output, HasSubstr("a picture would go to the terminal; redirect it"));
    EXPECT_THAT(picture.output, testing::Not(HasSubstr("PNG")));
}

TEST_F(Faults, SignalsLeaveNoPartialPicture) {
    for (int i = 0; i < 200; ++i) {
        Write("many/" + std::to_string(i) + ".svg",
              "<svg viewBox='0 0 9 9'><path d='M0 0L9 5 3 9z' fill='#abc'/></svg>");
    }
    const struct {
        const char* name;
        const char* death; // as the shell calls it
    } kSignals[] = {{"INT", "Interrupt"}, {"TERM", "Terminated"}, {"HUP", "Hangup"}};
    for (const auto& [name, death] : kSignals) {
        SCOPED_TRACE(name);
        // Job control keeps SIGINT from being ignored in the background. The smaller pictures of a drawing
        // stay temporary until its largest is done, so there is nearly always a file to remove.
        const Outcome outcome =
            Run("set -m; '" OZMIRA_TOOL "' render many --width 300 --scale 1,2,5 -o out -q & "
                "while [ -z \"$(ls out 2> /dev/null)\" ]; do sleep 0.01; done; kill -" +
                std::string(name) + " $!; wait $!");
        EXPECT_THAT(outcome.errors, HasSubstr(death));
        EXPECT_LT(CompletePictures("out"), 600u);
        Run("rm -r out");
    }
    // On a terminal, the progress bar goes and the last line counts the pictures.
    const Outcome interrupted = RunOnTerminal("render many --width 300 --scale 1,2,5 -o out & while [ -z "
                                              "\"$(ls out 2> /dev/null)\" ]; do sleep 0.01; "
                                              "done; kill -TERM $!; wait $!");
    EXPECT_THAT(interrupted.output,
                testing::ContainsRegex(
                    "\\] [0-9]+/200\r\x1B\\[Kozmira: interrupted; [0-9]+ pictures written to out"));
    EXPECT_LT(CompletePictures("out"), 600u);
    // A signal that the caller ignores stays ignored.
    EXPECT_EQ(
        Run("trap '' HUP; '" OZMIRA_TOOL "' render a.svg --width 3000 -q & sleep 0.02; kill -HUP $!; wait $!")
            .exitCode,
        0);
    // Signals are no longer blocked while the summary waits for a full pipe, which is then emptied.
    EXPECT_EQ(Run("mkfifo pipe; exec 3<> pipe; timeout 0.1 cat /dev/zero >&3; '" OZMIRA_TOOL
                  "' render a.svg -o out/ >&3 & while [ ! -e out/a.png ]; do sleep 0.01; done; sleep 0.2; "
                  "kill -TERM $!; timeout 0.1 cat <&3 > /dev/null; wait $!")
                  .exitCode,
              128 + SIGTERM);
}
