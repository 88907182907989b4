#include "picture.h"
#include "tool_test.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

using namespace ozm::test;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

namespace {

class Output : public ToolTest {
protected:
    Output() {
        for (const char* name :
             {"a.svg", "b.svg", "in/c.svg", "in/D.SVG", "in/deep/a.svg", "in/.hidden.svg"}) {
            Write(name, kTwoHalves);
        }
        Write("bad.svg", "<svg><g></svg");
        Write("taken", "something else");
    }
};

} // namespace

TEST_F(Output, IsNamedByInputsAndOptions) {
    const struct {
        const char* command;
        const char* summary;
        const char* files;
    } kCases[] = {
        {"render a.svg", "1 picture written to the current folder", "a.png"},
        {"render ./in/../b.svg", "1 picture written to the current folder", "b.png"},
        {"render a.svg b.svg --scale 1,2,1.5", "6 pictures written to the current folder",
         "a.png a@1.5x.png a@2x.png b.png b@1.5x.png b@2x.png"},
        {"render a.svg --scale 0.01,100", "2 pictures written to the current folder",
         "a@0.01x.png a@100x.png"},
        {"render a.svg -j 256 --timeout 86400", "1 picture written to the current folder", "a.png"},
        {"render a.svg -o new", "1 picture written to new", "new"},
        {"render a.svg -o new/deep/x.png", "1 picture written to new/deep/x.png", "new/deep/x.png"},
        {"render a.svg --scale 2 -o x.png", "1 picture written to x.png", "x.png"},
        {"render a.svg --scale 1,2 -o new/x.png", "2 pictures written to new/x.png",
         "new/x.png new/x@2x.png"},
        {"render a.svg -o in", "1 picture written to in", "in/a.png"},
        {"render a.svg -o out/", "1 picture written to out/", "out/a.png"},
        {"render a.svg b.svg -o out", "2 pictures written to out", "out/a.png out/b.png"},
        {"render in -o out", "3 pictures written to out", "out/D.png out/c.png out/deep/a.png"},
        {"render in/ a.svg a.svg ./a.svg -o out", "4 pictures written to out",
         "out/D.png out/a.png out/c.png out/deep/a.png"},
        {"render - < a.svg > piped", "", "piped"},
        {"render - -o out/ < a.svg", "1 picture written to out/", "out/stdin.png"},
        {"render <(cat a.svg) -o piped", "1 picture written to piped", "piped"},
        {"render a.svg -o - > piped", "", "piped"},
        {"render a.svg -o /dev/stdout | cat > piped", "", "piped"},
        {"render a.svg -o /dev/stdout > piped", "", "piped"},
        {"render a.svg -o /dev/fd/1 > piped", "", "piped"},
        {"render packed.svgz", "1 picture written to the current folder", "packed.png"},
        {"render - < packed.svgz > piped", "", "piped"},
        {"render links -o out", "5 pictures written to out",
         "out/outside/D.png out/outside/c.png out/outside/deep/a.png out/packed.png out/real/c.png"},
        {"render - -q --dry-run < a.svg", "", ""},
        {"render a.svg -o out/ --depfile a.d", "1 picture written to out/", "a.d out/a.png"},
        {"render -q a.svg", "", "a.png"},
        {"render -j4 -qo out -- a.svg", "", "out"},
    };
    Run("rm taken; gzip < a.svg > packed.svgz; mkdir -p links/real; ln -s ../packed.svgz links; "
        "cp a.svg links/real/c.svg; ln -s .. links/real/loop; ln -s real links/again; ln -s ../in "
        "links/outside");
    for (const auto& [command, summary, files] : kCases) {
        SCOPED_TRACE(command);
        const Outcome outcome = Run("ozmira " + std::string(command));
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.errors, "");
        if (Files() == "piped") {
            EXPECT_THAT(Read("piped"), testing::EndsWith("IEND\xAE\x42\x60\x82"));
        }
        EXPECT_EQ(outcome.output, *summary ? summary + std::string("\n") : "");
        EXPECT_EQ(Files(), files);
        Run("rm -rf out new piped a.d; find . -name '*.png' -delete");
    }
}

TEST_F(Output, IsWrittenForTheGoodFilesAmongBadOnes) {
    const struct {
        const char* command;
        std::vector<const char*> errors; ///< Regular expressions, one per line.
        const char* files;
    } kCases[] = {
        {"render bad.svg a.svg none.svg in -o out -j 4",
         {"bad.svg: not well-formed XML: expected > at line 1, column 14; correct it there",
          "none.svg: no such file; check the name"},
         "out/D.png out/a.png out/c.png out/deep/a.png"},
        {"render words.svg html.svg none.svg size.svg empty a.svg",
         {"words.svg: not well-formed XML: .* line 1", "html.svg: has no svg element at the top but \"html\"",
          "none.svg: no such file", "size.svg: has the size 0 x 0", "empty: a folder without .svg files"},
         "a.png"},
        {"render a.svg b.svg --width 15000",
         {"a.svg: would make a picture of 15000 x 7500 pixels; the limit is 32767 on a side and 100,000,000 "
          "in",
          "b.svg: would make a picture of 15000 x 7500 pixels"},
         ""},
        {"render wide.svg high.svg a.svg --scale 2",
         {"wide.svg: would make a picture of 32768 x 2 pixels",
          "high.svg: would make a picture of 2 x 32768 pixels"},
         "a@2x.png"},
        {"render wide.svg high.svg none.svg --scale 1.9999 -o out",
         {"none.svg"},
         "out/high@1.9999x.png out/wide@1.9999x.png"},
        {"render /proc/self/mem a.svg", {"/proc/self/mem: cannot be read: Input/output error"}, "a.png"},
        {"render a.svg in/deep/a.svg -o out",
         {"in/deep/a.svg: would overwrite out/a.png, made from a.svg; rename one"},
         "out/a.png"},
        {"render a.svg 'in/deep/a.svg' 'a@2x.svg' --scale 1,2",
         {"in/deep/a.svg: would overwrite a.png, made from a.svg"},
         "a.png a@2x.png"},
        {"render damaged.svgz", {"damaged.svgz: compressed, and damaged; fetch or export it again"}, ""},
        {"render a.svg -o taken/a.png",
         {"a.svg: cannot write taken/a.png: Not a directory; a file is where its folder would be"},
         ""},
        {"render a.svg -o /proc/nothing/a.png", {"a.svg: cannot write /proc/nothing/a.png: "}, ""},
        {"render a.svg -o in/ --scale 7",
         {"a.svg: cannot write in/a@7x.png: a folder is there; choose another name"},
         ""},
        {"render a.svg -o /dev/full",
         {"a.svg: cannot write /dev/full: No space left on device; free some space, or"},
         ""},
        {"render a.svg -o - > /dev/full",
         {"a.svg: cannot write standard output: No space left on device"},
         ""},
        {"render a.svg -o - >&-", {"a.svg: cannot write standard output: Bad file descriptor"}, ""},
        {"render a.svg > /dev/full", {"cannot write standard output: No space left on device"}, "a.png"},
        {"dump a.svg > /dev/full", {"cannot write standard output: No space left on device"}, ""},
        {"dump --json a.svg > /dev/full", {"cannot write standard output: No space left on device"}, ""},
        {"info a.svg b.svg > /dev/full", {"cannot write standard output: No space left on device"}, ""},
        {"--help > /dev/full", {"cannot write standard output: No space left on device"}, ""},
    };
    Write("a@2x.svg", kTwoHalves);
    Write("words.svg", "no XML at all");
    Write("html.svg", "<html/>");
    Write("size.svg", "<svg/>");
    Write("wide.svg", "<svg viewBox='0 0 16384 1'><rect width='9' height='1'/></svg>");
    Write("damaged.svgz", "\x1F\x8B\x08 and more");
    Write("high.svg", "<svg viewBox='0 0 1 16384'><rect width='1' height='9'/></svg>");
    fs::create_directory(m_folder / "empty");
    fs::create_directory(m_folder / "in/a@7x.png");
    for (const auto& [command, errors, files] : kCases) {
        SCOPED_TRACE(command);
        const Outcome outcome = Run("ozmira " + std::string(command));
        EXPECT_EQ(outcome.exitCode, 1);
        const auto lines = Lines(outcome.errors);
        EXPECT_EQ(lines.size(), errors.size()) << outcome.errors;
        for (size_t i = 0; i < std::min(lines.size(), errors.size()); ++i) {
            EXPECT_THAT(lines[i], ContainsRegex("^ozmira: " + std::string(errors[i])));
        }
        EXPECT_EQ(Files(), *files ? files + std::string(" taken") : "taken");
        Run("rm -rf out; find . -name '*.png' -type f -delete");
    }
}

TEST_F(Output, StopsWhereNothingCanBeWritten) {
    for (int i = 0; i < 50; ++i) Write("many/" + std::to_string(i) + ".svg", kTwoHalves);
    const Outcome outcome = Run("ozmira render many -o /sys -j 2");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.output, "no picture written, 1 file failed, 49 files not reached\n");
    // A folder among others concerns its own outputs alone.
    Run("mkdir out set; ln -s /sys out/deep; cp -r in/deep a.svg b.svg set; cp a.svg set/z.svg");
    const Outcome partial = Run("ozmira render set -o out -j 1");
    EXPECT_EQ(partial.exitCode, 1);
    EXPECT_THAT(partial.errors, HasSubstr("set/deep/a.svg: cannot write out/deep/a.png: "));
    EXPECT_EQ(partial.output, "3 pictures written to out, 1 file failed\n");
}

TEST_F(Output, IsDrawnFromTheDrawingForItsScale) {
    Write("set/x.svg", kTwoHalves);
    Write("set/x@2x.svg", "<svg viewBox='0 0 9 6'><rect width='9' height='6'/></svg>");
    const struct {
        const char* options;
        const char* sizes; ///< Of x.png, x@2x.png and x@3x.png.
    } kCases[] = {{"", "4 x 2, 9 x 6, 12 x 6"}, {"--height 4", "8 x 4, 12 x 8, 24 x 12"}};
    for (const auto& [options, sizes] : kCases) {
        const Outcome outcome = Run("ozmira render set -o out --scale 1,2,3 " + std::string(options));
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.output, "3 pictures written to out\n");
        EXPECT_EQ(DecodePNG(Read("out/x.png")).Size() + ", " + DecodePNG(Read("out/x@2x.png")).Size() + ", " +
                      DecodePNG(Read("out/x@3x.png")).Size(),
                  sizes);
    }
}

TEST_F(Output, SaysThatItIsBlank) {
    const std::string svg = "<svg xmlns:xlink='http://www.w3.org/1999/xlink' viewBox='0 0 9 9'>";
    Write("empty.svg", svg + "</svg>");
    Write("entity.svg", svg + "<path d='M0&#32;0h9v9z'/></svg>");
    Write("cycle.svg", svg +
                           "<linearGradient id='a' xlink:href='#b'/><linearGradient id='b' xlink:href='#a'/>"
                           "<path fill='url(#a)' d='M0 0h9v9z'/></svg>");
    for (const std::string name : {"empty.svg", "entity.svg", "cycle.svg"}) {
        const std::string warning = name + ": warning: the picture is blank, nothing is painted\n";
        EXPECT_EQ(Run("ozmira render a.svg " + name + " -o out/").errors, warning);
        EXPECT_THAT(Run("ozmira render " + name + " --scale 1,2 -o out/").errors, StartsWith(warning));
        EXPECT_EQ(Run("ozmira render a.svg -q " + name + " -o out/").errors, "");
    }
}

TEST_F(Output, ToAClosedPipeFails) {
    const Outcome outcome = Run("{ sleep 0.3; ozmira render a.svg -o -; echo $? > code; } | true; sleep 0.6");
    EXPECT_EQ(Read("code"), "1\n");
    EXPECT_THAT(outcome.errors, HasSubstr("standard output: Broken pipe"));
}

TEST_F(Output, ReplacesFilesAndFollowsLinks) {
    Write("a.png", "\x89PNG\r\n\x1A\nold");
    fs::permissions(m_folder / "a.png", fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("real.png", m_folder / "link.png");
    Write("real.png", "");
    ASSERT_EQ(Run("ozmira render a.svg && ozmira render a.svg -o link.png").exitCode, 0);
    EXPECT_THAT(Read("a.png"), StartsWith("\x89PNG"));
    EXPECT_EQ(fs::status(m_folder / "a.png").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(Read("real.png"), Read("a.png"));
    EXPECT_TRUE(fs::is_symlink(m_folder / "link.png"));
    // A file that cannot be drawn does not touch the picture of an earlier run.
    const std::string before = Read("a.png");
    EXPECT_EQ(Run("ozmira render bad.svg -o a.png").exitCode, 1);
    EXPECT_EQ(Read("a.png"), before);
}

TEST_F(Output, ReportsProblemsInTheOrderOfTheFiles) {
    std::string command = "ozmira render -j 8 ", expected;
    for (int i = 0; i < 60; ++i) {
        const std::string name = "f" + std::to_string(i) + ".svg";
        Write(name, i % 3 ? "<svg viewBox='0 0 400 400'><circle r='400'/></svg>" : "");
        command += name + " ";
        if (i % 3 == 0) expected += "ozmira: " + name + ": empty; is it the right file?\n";
    }
    const Outcome outcome = Run(command + "-o out/");
    EXPECT_EQ(outcome.errors, expected);
    EXPECT_EQ(outcome.output, "40 pictures written to out/, 20 files failed\n");
}

TEST_F(Output, DoesNotDependOnTheNumberOfThreads) {
    for (int i = 0; i < 40; ++i) {
        Write("many/" + std::to_string(i) + ".svg",
              "<svg viewBox='0 0 40 40'><circle cx='20' cy='20' r='" + std::to_string(i) + "'/></svg>");
    }
    EXPECT_EQ(Run("ozmira render many -o one -j 1 -q; ozmira render many -o eight -j 8 -q; diff -r one eight")
                  .output,
              "");
    EXPECT_EQ(Lines(Run("ls eight").output).size(), 40u);
}
