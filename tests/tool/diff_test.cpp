#include "tool_test.h"

#include <gmock/gmock.h>

using namespace ozm::test;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/// `kTwoHalves` with another right half: half of the pixels differ by 255 in two of four components.
constexpr const char* kLimeHalf = R"(<svg viewBox="0 0 4 2"><rect width="2" height="2"/>)"
                                  R"(<rect x="2" width="2" height="2" fill="lime"/></svg>)";
/// The same with a right half that differs from red by 2 in green.
constexpr const char* kNearlyRed = R"(<svg viewBox="0 0 4 2"><rect width="2" height="2"/>)"
                                   R"(<rect x="2" width="2" height="2" fill="#ff0200"/></svg>)";
/// Half transparent: red and alpha differ by 127 each.
constexpr const char* kTranslucent = R"(<svg viewBox="0 0 4 2"><rect width="2" height="2"/>)"
                                     R"(<rect x="2" width="2" height="2" fill="red" opacity=".5"/></svg>)";
constexpr const char* kTall = R"(<svg viewBox="0 0 4 4"><rect width="2" height="2"/></svg>)";

class Diff : public ToolTest {
protected:
    /// Writes a drawing into both folders.
    void WriteBoth(const std::string& name, const std::string& before, const std::string& after) const {
        Write("old/" + name, before);
        Write("new/" + name, after);
    }
};

} // namespace

TEST_F(Diff, TellsHowMuchDrawingsDiffer) {
    const struct {
        const char* drawing;
        const char* size;      ///< Options.
        const char* threshold; ///< An option.
        const char* line;      ///< Empty if nothing differs.
        int exitCode;
    } kCases[] = {
        {kTwoHalves, "", "", "", 0},
        {kLimeHalf, "", "", "differs by 63.75, in 4 of 8 pixels and by up to 255\n", 1},
        {kLimeHalf, "--scale 3", "", "differs by 63.75, in 36 of 72 pixels and by up to 255\n", 1},
        {kLimeHalf, "--height 4", "", "differs by 63.75, in 16 of 32 pixels and by up to 255\n", 1},
        {kLimeHalf, "--width 2", "", "differs by 63.75, in 1 of 2 pixels and by up to 255\n", 1},
        {kLimeHalf, "", "--threshold 63.7", "differs by 63.75", 1},
        {kLimeHalf, "", "--threshold 63.75", "differs by 63.75", 0},
        {kNearlyRed, "", "", "differs by 0.25, in 4 of 8 pixels and by up to 2\n", 1},
        {kNearlyRed, "", "--threshold 0.5", "differs by 0.25", 0},
        {kTranslucent, "", "", "differs by 31.75, in 4 of 8 pixels and by up to 127\n", 1},
        {kTall, "", "--threshold 255", "was 4 x 2 pixels and is 4 x 4\n", 1},
    };
    for (const auto& [drawing, size, threshold, line, exitCode] : kCases) {
        SCOPED_TRACE(std::string(drawing) + size + threshold);
        const std::string options = std::string(" ") + size + " ";
        WriteBoth("a.svg", kTwoHalves, drawing);
        Run("for x in old new; do ozmira render $x/a.svg -o pictures.$x/a.png" + options + "; done");
        // Pictures differ as much as the drawings from which they were made.
        for (const auto& [folders, name] :
             {std::pair("old new", "a.svg"), {"pictures.old pictures.new", "a.png"}}) {
            const Outcome outcome = Run(std::string("ozmira diff ") + folders + options + threshold);
            EXPECT_EQ(outcome.exitCode, exitCode) << name;
            EXPECT_EQ(outcome.errors, "");
            const std::string start =
                *line ? name + (": " + std::string(line)) : "1 picture compared: 0 changed\n";
            EXPECT_THAT(outcome.output, StartsWith(start));
        }
    }
}

TEST_F(Diff, MakesAPageOfWhatIsNotTheSame) {
    WriteBoth("same.svg", kTwoHalves, kTwoHalves);
    WriteBoth("much.svg", kTwoHalves, kLimeHalf);
    WriteBoth("bad.svg", kTwoHalves, "no drawing");
    Write("old/gone.svg", kTwoHalves);
    Outcome outcome = Run("ozmira diff old new -o page.html");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.output, HasSubstr("4 pictures compared"));
    const std::string page = Read("page.html");
    EXPECT_TRUE(page.ends_with("</html>\n"));
    EXPECT_THAT(page, HasSubstr(R"("columns":["Old","New"])"));
    EXPECT_THAT(page,
                HasSubstr(R"("name":"much.svg","width":4,"height":2,"status":"changed","difference":63.75)"));
    EXPECT_THAT(page, HasSubstr(R"("status":"gone")"));
    EXPECT_THAT(page, HasSubstr(R"("problem":"new/bad.svg: )"));
    EXPECT_THAT(page, Not(HasSubstr("same.svg")));
    EXPECT_EQ(Run("ozmira diff old new -o - 2>/dev/null | cmp - page.html").exitCode, 0);

    for (const char* arguments : {"old new -o old/gone.svg", "old new -o new", "old new -o - --json"}) {
        outcome = Run(std::string("ozmira diff ") + arguments);
        EXPECT_EQ(outcome.exitCode, 2) << arguments;
        EXPECT_EQ(outcome.output, "") << arguments;
    }
    Run("ozmira render old/gone.svg -o old/x.png; cp old/x.png new/x.png");
    outcome = Run("ozmira diff old new -o new/x.png");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("new/x.png"));
    EXPECT_THAT(outcome.output, HasSubstr("compared"));
    EXPECT_EQ(Run("cmp old/x.png new/x.png").exitCode, 0);
}

TEST_F(Diff, ListsWhatIsGoneChangedAndNew) {
    WriteBoth("same.svg", kTwoHalves, kTwoHalves);
    WriteBoth("sub/little.svg", kTwoHalves, kNearlyRed);
    WriteBoth("much.svg", kTwoHalves, kLimeHalf);
    WriteBoth("size.svg", kTwoHalves, kTall);
    Write("old/gone.svg", kTwoHalves);
    Write("new/sub/new.svg", kTwoHalves);
    Write("new/note.txt", "");
    const Outcome outcome = Run("ozmira diff old new/ --threshold 1");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.output, "gone.svg: gone\n"
                              "size.svg: was 4 x 2 pixels and is 4 x 4\n"
                              "much.svg: differs by 63.75, in 4 of 8 pixels and by up to 255\n"
                              "sub/little.svg: differs by 0.25, in 4 of 8 pixels and by up to 2\n"
                              "sub/new.svg: new\n"
                              "6 pictures compared: 3 changed (2 by more than 1), 1 new, 1 gone\n");
    const Outcome json = Run("ozmira diff old new --json");
    EXPECT_EQ(json.exitCode, 1);
    EXPECT_THAT(json.output,
                HasSubstr(R"({"file":"much.svg","state":"changed","difference":63.75,"largest":255,)"
                          R"("pixels":4,"old":{"width":4,"height":2},"new":{"width":4,"height":2}})"));
    EXPECT_THAT(json.output,
                HasSubstr(R"([{"file":"gone.svg","state":"gone"},{"file":"size.svg","state":"resized",)"
                          R"("old":{"width":4,"height":2},"new":{"width":4,"height":4}})"));
    EXPECT_EQ(
        Run("ozmira diff old new --json | python3 -c 'import json, sys; print(len(json.load(sys.stdin)))'")
            .output,
        "5\n");
    EXPECT_EQ(Run("ozmira diff -q old new").output, "");
}

TEST_F(Diff, LetsNewPicturesPass) {
    WriteBoth("a.svg", kTwoHalves, kTwoHalves);
    Write("new/b.svg", kTwoHalves);
    EXPECT_EQ(Run("ozmira diff old new").exitCode, 0);
    EXPECT_EQ(Run("ozmira diff new old").exitCode, 1); // It is gone.
}

TEST_F(Diff, ReadsForeignPictures) {
    // One red pixel: in a palette of two colours with transparency, in 16 bits, and interlaced.
    Run("python3 - <<'E'\n"
        "import struct, zlib\n"
        "def chunk(kind, data):\n"
        "    body = kind + data\n"
        "    return struct.pack('>I', len(data)) + body + struct.pack('>I', zlib.crc32(body))\n"
        "def png(name, depth, kind, row, before=b'', interlace=0):\n"
        "    head = struct.pack('>IIBBBBB', 1, 1, depth, kind, 0, 0, interlace)\n"
        "    data = chunk(b'IHDR', head) + before + chunk(b'IDAT', zlib.compress(b'\\0' + row)) + "
        "chunk(b'IEND', b'')\n"
        "    open(name, 'wb').write(b'\\x89PNG\\r\\n\\x1a\\n' + data)\n"
        "png('rgb.png', 8, 2, b'\\xff\\0\\0')\n"
        "png('palette.png', 8, 3, b'\\1', chunk(b'PLTE', b'\\0\\0\\0\\xff\\0\\0') + chunk(b'tRNS', "
        "b'\\0\\xff'))\n"
        "png('deep.png', 16, 6, b'\\xff\\xff\\0\\0\\0\\0\\xff\\xff', interlace=1)\n"
        "png('clear.png', 8, 6, b'\\xff\\0\\0\\0')\n"
        "png('clear2.png', 8, 6, b'\\0\\xff\\0\\0')\n"
        "E\n");
    const std::pair<const char*, const char*> kSame[] = {
        {"rgb.png", "palette.png"}, {"rgb.png", "deep.png"}, {"clear.png", "clear2.png"}};
    for (const auto& [one, other] : kSame)
        EXPECT_EQ(Run("ozmira diff " + std::string(one) + " " + other).exitCode, 0) << one << other;
    EXPECT_THAT(Run("ozmira diff rgb.png clear.png").output,
                HasSubstr("differs by 127.5, in 1 of 1 pixel and"));
}

TEST_F(Diff, ReportsWhatCannotBeCompared) {
    const struct {
        const char* content; ///< Of new/a.png.
        const char* message; ///< A regular expression.
    } kCases[] = {
        {"\x89PNG\r\n\x1A\n", "^ozmira: new/a.png: not a sound PNG file: .*; write it anew"},
        {"<svg", "^ozmira: new/a.png: not well-formed XML"},
        {"", "^ozmira: new/a.png: empty"},
    };
    for (const auto& [content, message] : kCases) {
        Write("old.svg", kTwoHalves);
        Run("ozmira render old.svg -o old/a.png");
        Write("new/a.png", content);
        WriteBoth("b.svg", kTwoHalves, kTwoHalves);
        const Outcome outcome = Run("ozmira diff old new");
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(Lines(outcome.errors).size(), 1u) << outcome.errors;
        EXPECT_THAT(outcome.errors, ContainsRegex(message));
        EXPECT_EQ(outcome.output, "2 pictures compared: 0 changed, 1 failed\n");
        EXPECT_THAT(Run("ozmira diff --json old new").output,
                    HasSubstr(R"({"file":"a.png","state":"failed","problem":")"));
    }
    Run("mkdir empty; mkdir none");
    EXPECT_THAT(Run("ozmira diff empty none").errors,
                ContainsRegex("empty: a folder without .png and .svg files.*\n.*none: a folder without"));
}
