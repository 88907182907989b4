// What outputs replace, what they leave alone, and what runs leave behind.
#include "tool_test.h"

#include <gmock/gmock.h>

using namespace ozm::test;
using testing::ContainsRegex;
using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

constexpr const char* kPNGStart = "\x89PNG\r\n\x1A\n";

class Replacing : public ToolTest {
protected:
    Replacing() {
        for (const char* name : {"a.svg", "b.svg", "arc.svg"}) Write(name, kTwoHalves);
        Write("arc.svg", "<svg viewBox='0 0 9 9'><path d='M1 1a3 3 0 0 1 3 3z'/></svg>");
        Write("old.png", kPNGStart);
        Write("text.png", "not a picture");
        Write("page.html", "<!DOCTYPE html>");
        Write("notes.txt", "notes");
    }

    /// The names and contents of all files.
    std::string Everything() const { return Run("find . -type f | sort | xargs head -v -c 100").output; }
};

} // namespace

TEST_F(Replacing, IsRefusedForFilesThatArePrecious) {
    const struct {
        const char* command;
        int exitCode;
        const char* error; ///< A regular expression.
    } kCases[] = {
        {"render -o *.svg", 2, "-o: \"a.svg\" has the name of a drawing"},
        {"render a.svg -o x.jpg", 2, "-o: \"x.jpg\" would hold a PNG file; end the name in .png"},
        {"render -o a.svg b.svg", 2, "-o: \"a.svg\" has the name of a drawing"},
        {"render -o new.SVG b.svg", 2, "-o: \"new.SVG\" has the name of a drawing"},
        {"render -o new.svgz b.svg", 2, "-o: \"new.svgz\" has the name of a drawing"},
        {"render a.svg -o text.png", 1, "cannot write text.png: the file there is no PNG picture; move it"},
        {"render a.svg -o notes.txt", 1, "cannot write notes.txt: the file there is no PNG picture"},
        {"render a.svg -o link.png", 1, "cannot write link.png: the file there is no PNG picture"},
        {"render a.svg -o read-only.png", 1,
         "cannot write read-only.png: the file there is read-only; allow"},
        {"render a.svg -o page.html", 1, "cannot write page.html: the file there is no PNG picture"},
        {"conform arc.svg -o old.png", 1, "cannot write old.png: the file there is no drawing; move it"},
        {"conform arc.svg -o page.html", 1, "cannot write page.html: the file there is no drawing"},
        {"conform arc.svg b.svg -o links/", 1, "cannot write links/arc.svg: it is one of the files to read"},
        {"conform arc.svg -o read-only.svg", 1, "read-only.svg: the file there is read-only; allow"},
    };
    fs::create_symlink("b.svg", m_folder / "link.png");
    Run("cp old.png read-only.png; cp a.svg read-only.svg; chmod 444 read-only.*; "
        "mkdir links; cp b.svg links; ln -s ../b.svg links/arc.svg");
    const std::string before = Everything();
    for (const auto& [command, exitCode, error] : kCases) {
        SCOPED_TRACE(command);
        const Outcome outcome = Run("ozmira " + std::string(command));
        EXPECT_EQ(outcome.exitCode, exitCode);
        EXPECT_THAT(outcome.errors, ContainsRegex(error));
        EXPECT_EQ(Everything(), before);
    }
}

TEST_F(Replacing, LeavesEqualFilesAlone) {
    const struct {
        const char* command;
        const char* first;  ///< The summary of the first run.
        const char* second; ///< Of a run after one output was lost and one was damaged.
        const char* third;  ///< Of a run after that, over outputs that are read-only.
        const char* lost;
        const char* damaged;
    } kCases[] = {
        {"render a.svg b.svg arc.svg --scale 1,2 -o out/", "6 pictures written to out/",
         "2 pictures written to out/, 4 already there", "no picture written to out/, 6 already there",
         "out/a.png", "out/b@2x.png"},
        {"conform a.svg b.svg arc.svg -o out/", "3 files written to out/, 1 of them rewritten",
         "2 files written to out/, 1 already there, 1 of them rewritten",
         "no file written to out/, 3 already there, 1 of them rewritten", "out/a.svg", "out/arc.svg"},
    };
    for (const auto& [arguments, first, second, third, lost, damaged] : kCases) {
        SCOPED_TRACE(arguments);
        const std::string command = "ozmira " + std::string(arguments) + " | head -1";
        EXPECT_EQ(Run(command).output, first + std::string("\n"));
        Run("cp -r out whole; find out -type f -exec touch -d 2001-01-01 {} +; rm " + std::string(lost) +
            "; truncate -s -1 " + damaged);
        EXPECT_EQ(Run(command).output, second + std::string("\n"));
        EXPECT_EQ(Run("diff -r out whole; find out -type f -newermt 2002-01-01 | sort").output,
                  std::string(lost) + "\n" + damaged + "\n");
        EXPECT_EQ(Run("chmod 444 out/*; " + command + "; rm -rf out whole").output,
                  third + std::string("\n"));
    }
}

TEST_F(Replacing, IsDoneForPicturesThatDifferInAnyByte) {
    Run("ozmira render a.svg -q");
    const std::string picture = Read("a.png");
    for (size_t at = 8; at < picture.size(); at += 3) {
        std::string damaged = picture;
        damaged[at] = static_cast<char>(damaged[at] ^ 1);
        Write("a.png", damaged);
        EXPECT_EQ(Run("ozmira render a.svg").output, "1 picture written to the current folder\n") << at;
        EXPECT_EQ(Read("a.png"), picture) << at;
    }
}

TEST_F(Replacing, SweepsWhatKilledRunsHaveLeft) {
    for (int i = 0; i < 100; ++i) Write("many/" + std::to_string(i) + ".svg", kTwoHalves);
    Run("'" OZMIRA_TOOL "' render many --width 1000 --scale 1,2,5 -o out -q & "
        "while ! ls -A out 2> /dev/null | grep -q tmp; do sleep 0.01; done; kill -KILL $!; wait $!");
    EXPECT_THAT(Run("ls -A out").output, HasSubstr(".ozmira-"));
    // Those of other machines may still be in use, until they are old.
    Run("touch out/.ozmira-other-1-1.tmp; touch -d '2 days ago' out/.ozmira-old-1-1.tmp");
    EXPECT_EQ(Run("ozmira render a.svg -o out/ -q").exitCode, 0);
    EXPECT_EQ(Run("ls -A out | grep tmp").output, ".ozmira-other-1-1.tmp\n");
}

TEST_F(Replacing, IsOnlyDescribedInADryRun) {
    Run("ozmira render a.svg b.svg -o out/; rm out/b.png; touch -d 2001-01-01 out out/a.png");
    const Outcome outcome = Run("ozmira render a.svg b.svg -o out/ --dry-run --depfile out.d");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors, "b.svg: would be drawn to out/b.png\n");
    EXPECT_EQ(outcome.output, "1 picture would be written to out/, 1 already there\n");
    EXPECT_EQ(Run("find out out.d -newermt 2002-01-01").output, "");
    EXPECT_EQ(Run("ozmira render a.svg -o text.png --dry-run").exitCode, 1);
}

TEST_F(Replacing, FollowsMake) {
    Write("with blank$.svg", kTwoHalves);
    Run("ozmira render a.svg 'with blank$.svg' none.svg -o out/ --depfile 'the target.d'");
    EXPECT_EQ(Read("the target.d"), "the\\ target: \\\n  a.svg \\\n  with\\ blank$$.svg \\\n  none.svg\n"
                                    "a.svg:\nwith\\ blank$$.svg:\nnone.svg:\n");
    EXPECT_EQ(Run("ozmira render b.svg -o out/ --depfile a.svg").exitCode, 2);
    EXPECT_EQ(Read("a.svg"), kTwoHalves);
    if (Run("command -v make").exitCode != 0) return;
    Write("Makefile", "stamp: set\n\t@'" OZMIRA_TOOL
                      "' render set -o made --depfile $@.d && touch $@\n-include stamp.d\n");
    Run("mkdir set; cp a.svg b.svg set; touch -d 2001-01-01 set set/*");
    const std::pair<const char*, const char*> kSteps[] = {
        {"", "2 pictures written to made\n"},
        {"", "make: 'stamp' is up to date.\n"},
        {"sleep 0.01; sed -i s/red/blue/ set/a.svg;", "1 picture written to made, 1 already there\n"},
        {"sleep 0.01; rm set/b.svg;", "no picture written to made, 1 already there\n"},
        {"", "make: 'stamp' is up to date.\n"},
    };
    for (const auto& [change, output] : kSteps) {
        EXPECT_EQ(Run(std::string(change) + " LC_ALL=C make").output, output) << change;
    }
}
