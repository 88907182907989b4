// The tool as a process: exit codes, messages, and which files there are afterwards.
#include <gtest/gtest.h>
#include <png.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

const char* const kSquare = "<svg width='10' height='8'><rect width='5' height='4' fill='#ff8000'/></svg>";

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

struct Outcome {
    int status = -1;
    std::string out, err;
};

/// Every test runs in an empty folder of its own.
class ToolTest : public testing::Test {
protected:
    ToolTest() : m_home(fs::current_path()) {
        std::string name = (fs::temp_directory_path() / "ozmira-tool-XXXXXX").string();
        fs::current_path(mkdtemp(name.data()));
        m_folder = fs::current_path();
    }
    ~ToolTest() override {
        fs::current_path(m_home);
        fs::remove_all(m_folder);
    }

    static void write(const fs::path& name, const std::string& text) {
        if (name.has_parent_path()) fs::create_directories(name.parent_path());
        std::ofstream(name, std::ios::binary) << text;
    }
    static std::string read(const fs::path& name) {
        std::ostringstream text;
        text << std::ifstream(name, std::ios::binary).rdbuf();
        return text.str();
    }
    static Outcome run(const std::string& arguments) {
        const fs::path out = fs::current_path() / ".out", err = fs::current_path() / ".err";
        const std::string redirect = arguments.find('>') == std::string::npos ? " >" + out.string() : "";
        const int status =
            std::system(("'" OZMIRA_TOOL "' " + arguments + redirect + " 2>" + err.string()).c_str());
        Outcome outcome = {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read(out), read(err)};
        fs::remove(out);
        fs::remove(err);
        return outcome;
    }
    /// The names of all files below the current folder, apart from SVG files.
    static std::set<std::string> products() {
        std::set<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator("."))
            if (entry.is_regular_file() && entry.path().extension() != ".svg")
                names.insert(fs::relative(entry.path()).string());
        return names;
    }

private:
    fs::path m_home, m_folder;
};

using Names = std::set<std::string>;

TEST_F(ToolTest, DrawsWhatItIsAskedFor) {
    const struct {
        const char* arguments;
        Names pictures;
    } cases[] = {
        {"render a.svg", {"a.png"}},
        {"render a.svg --scale 1,2,3", {"a.png", "a@2x.png", "a@3x.png"}},
        {"render a.svg -o new.png", {"new.png"}},
        {"render a.svg b.svg -o out/", {"out/a.png", "out/b.png"}},
        {"render icons -o out", {"out/c.png", "out/deep/d.png"}},
        {"render - -o piped.png < a.svg", {"piped.png"}},
        {"render a.svg -o - > stream", {"stream"}},
        {"render a.svg b.svg -j 1 --width 3 --fill steelblue --debug-frames -q", {"a.png", "b.png"}},
    };
    for (const auto& c : cases) {
        for (const char* file : {"a.svg", "b.svg", "icons/c.svg", "icons/deep/d.svg"}) write(file, kSquare);
        const Outcome outcome = run(c.arguments);
        EXPECT_EQ(outcome.status, 0) << c.arguments << '\n' << outcome.err;
        EXPECT_EQ(products(), c.pictures) << c.arguments;
        for (const std::string& name : products()) fs::remove(name);
    }
}

TEST_F(ToolTest, BadFilesGetALineEachAndTheRestIsDrawn) {
    const struct {
        const char* name;
        std::string text;
        const char* reason;
    } bad[] = {
        {"words.svg", "no XML at all", "not well-formed.*line 1"},
        {"open.svg", "<svg><g>", "not well-formed"},
        {"html.svg", "<html/>", "no svg element"},
        {"size.svg", "<svg/>", "size 0 x 0"},
        {"empty.svg", "", "svg element|empty|well-formed"},
        {"deep.svg", "<svg width='1' height='1'>" + repeated("<g>", 2000) + repeated("</g>", 2000) + "</svg>",
         "nests elements deeper than 1,024"},
        {"cycle.svg",
         "<svg width='9' height='9' xmlns:xlink='x'><g id='a'><use xlink:href='#b'/></g><g id='b'><use "
         "xlink:href='#a'/></g></svg>",
         "cycle"},
        {"clip.svg",
         "<svg width='9' height='9' xmlns:xlink='x'><clipPath id='a'><use xlink:href='#a'/></clipPath><rect "
         "width='9' "
         "height='9' clip-path='url(#a)'/></svg>",
         "cycle"},
    };
    std::string arguments = "render good.svg missing.svg nothing";
    write("good.svg", kSquare);
    write("last.svg", kSquare);
    fs::create_directory("nothing");
    for (const auto& b : bad) {
        write(b.name, b.text);
        arguments += std::string(" ") + b.name;
    }
    std::string many = "<svg width='9' height='9' xmlns:xlink='x'><rect id='x0' width='1' height='1'/>";
    for (int i = 1; i <= 30; ++i) {
        const std::string use = "<use xlink:href='#x" + std::to_string(i - 1) + "'/>";
        many += "<g id='x" + std::to_string(i) + "'>" + use + use + "</g>";
    }
    write("many.svg", many + "</svg>");

    const Outcome outcome = run(arguments + " many.svg last.svg");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(products(), (Names{"good.png", "last.png"}));
    const auto says = [&](const std::string& name, const std::string& reason) {
        const std::regex line("ozmira: " + name + ": [^\n]*(" + reason + ")[^\n]*\n");
        EXPECT_TRUE(std::regex_search(outcome.err, line)) << name << " in:\n" << outcome.err;
    };
    for (const auto& b : bad) says(b.name, b.reason);
    says("missing.svg", "no such file");
    says("nothing", "without .svg files");
    says("many.svg", "10,?000,?000|multipl");
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 3 + std::ssize(bad));
}

TEST_F(ToolTest, WrongUsageAndUnwritableOutput) {
    write("a.svg", kSquare);
    write("b.svg", kSquare);
    write("file", "");
    const struct {
        const char* arguments;
        int status;
    } cases[] = {
        {"", 2},
        {"paint a.svg", 2},
        {"render", 2},
        {"render a.svg --width 0", 2},
        {"render a.svg --width -3", 2},
        {"render a.svg --width abc", 2},
        {"render a.svg --height 1e9", 2},
        {"render a.svg --scale 0", 2},
        {"render a.svg --scale 1,x", 2},
        {"render a.svg --fill nocolour", 2},
        {"render a.svg b.svg -o - > file", 2},
        {"render a.svg -o file/a.png", 1},
        {"render a.svg -o /dev/full", 1},
        {"render a.svg -o - > /dev/full", 1},
        {"dump missing.svg", 1},
        {"dump .", 1},
        {"info missing.svg", 1},
    };
    for (const auto& c : cases) {
        const Outcome outcome = run(c.arguments);
        EXPECT_EQ(outcome.status, c.status) << c.arguments << '\n' << outcome.err;
        EXPECT_NE(outcome.err, "") << c.arguments;
        EXPECT_EQ(products(), Names{"file"}) << c.arguments;
    }
    for (const char* help : {"--help", "render --help", "info --help", "dump --help"}) {
        const Outcome outcome = run(help);
        EXPECT_EQ(outcome.status, 0) << help;
        EXPECT_NE(outcome.out.find("Examples:"), std::string::npos) << help;
    }
    EXPECT_TRUE(std::regex_search(run("--version").out, std::regex("\\d+\\.\\d+")));
}

TEST_F(ToolTest, PicturesHoldPixelsAndResolution) {
    write("a.svg", kSquare);
    ASSERT_EQ(run("render a.svg --width 20 --scale 2").status, 0);
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_file(&image, "a@2x.png"));
    image.format = PNG_FORMAT_RGBA;
    std::vector<png_byte> pixels(PNG_IMAGE_SIZE(image));
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr));
    EXPECT_EQ(image.width, 40u);
    EXPECT_EQ(image.height, 32u);
    const auto at = [&](size_t x, size_t y) {
        const png_byte* p = &pixels[4 * (40 * y + x)];
        return std::vector<int>(p, p + 4);
    };
    EXPECT_EQ(at(3, 3), (std::vector<int>{255, 128, 0, 255}));
    EXPECT_EQ(at(30, 30)[3], 0);
    const std::string file = read("a@2x.png");
    const size_t resolution = file.find("pHYs");
    ASSERT_NE(resolution, std::string::npos);
    EXPECT_EQ(file.substr(resolution + 4, 9),
              std::string("\0\0\x16\x25\0\0\x16\x25\1", 9)); // 144 dots per inch
}

TEST_F(ToolTest, DumpsAnythingAsADocument) {
    const std::string empty =
        R"({"viewBox":[0,0,0,0],"size":{"width":{"unit":"PX","value":0},)"
        R"("height":{"unit":"PX","value":0}},"definitions":[],"elements":[],"styles":[]})";
    for (const std::string& text :
         {std::string(), std::string("\0\xff\xfe<", 4), std::string("<<<<"), std::string(9999, '<')}) {
        write("x.svg", text);
        const Outcome outcome = run("dump --json x.svg");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(std::regex_replace(outcome.out, std::regex("\\s"), ""), empty);
    }
    write("x.svg", "<svg viewBox='0 0 4 2'><path id='p\xff' d='M1 .1L1e300 1e999z' opacity='inf'/></svg>");
    const std::string json = std::regex_replace(run("dump --json x.svg").out, std::regex("\\s"), "");
    for (const char* part : {R"("viewBox":[0,0,4,2])", R"("unit":"PT","value":4)",
                             R"({"id":"p�","elementIndex":1})", R"({"type":"MoveTo","point":[1,0.1]})",
                             R"({"type":"LineTo","points":[[1e+300,0]]},{"type":"ClosePath"})",
                             R"({"type":"Opacity","number":"inf"})"})
        EXPECT_NE(json.find(part), std::string::npos) << part << " in " << json;
}

TEST_F(ToolTest, BatchesDoNotDependOnTheNumberOfThreads) {
    for (int i = 0; i < 40; ++i)
        write("in/" + std::to_string(i) + ".svg", "<svg width='40' height='40'><circle cx='20' cy='20' r='" +
                                                      std::to_string(i % 20) + "'/></svg>");
    ASSERT_EQ(run("render in -o one/ -j 1").status, 0);
    ASSERT_EQ(run("render in -o many/ -j 8").status, 0);
    for (int i = 0; i < 40; ++i) {
        const std::string name = std::to_string(i) + ".png";
        EXPECT_EQ(read("one/" + name), read("many/" + name));
        EXPECT_NE(read("one/" + name), "");
    }
}

TEST_F(ToolTest, LeavesNothingHalfWrittenWhenStopped) {
    for (int i = 0; i < 3000; ++i)
        write("in/" + std::to_string(i) + ".svg",
              "<svg width='900' height='900'><circle cx='400' cy='400' r='300'/></svg>");
    const pid_t child = fork();
    if (child == 0) {
        execl(OZMIRA_TOOL, OZMIRA_TOOL, "render", "in", "-o", "out/", "-q", nullptr);
        _exit(127);
    }
    while (!fs::exists("out") || std::distance(fs::directory_iterator("out"), {}) < 5) usleep(2000);
    kill(child, SIGTERM);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_FALSE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    for (const auto& entry : fs::directory_iterator("out")) {
        EXPECT_EQ(entry.path().extension(), ".png") << entry.path();
        EXPECT_EQ(entry.path().filename().string()[0] == '.', false) << entry.path();
        const std::string file = read(entry.path());
        EXPECT_NE(file.find("IEND"), std::string::npos) << entry.path();
    }
}

} // namespace
