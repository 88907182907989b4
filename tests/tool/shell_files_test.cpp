#include "tool_test.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

using namespace ozm::test;

namespace {

class ShellFiles : public ToolTest {
protected:
    /// The options in the help text of a subcommand.
    std::set<std::string> Options(const std::string& command) const {
        std::set<std::string> options;
        const std::regex option("-(?:-[a-z-]+|[a-z])(?=[, ])");
        for (const std::string& line : Lines(Run("ozmira " + command + " --help").output)) {
            if (!line.starts_with("  -")) continue;
            const std::string names = line.substr(2, 26);
            for (std::sregex_iterator at(names.begin(), names.end(), option), end; at != end; ++at) {
                options.insert(at->str());
            }
        }
        return options;
    }
    bool Has(const std::string& program) const { return Run("command -v " + program).exitCode == 0; }
};

constexpr const char* kBash = OZMIRA_TOOL_SOURCES "/completions/ozmira.bash";
constexpr const char* kZsh = OZMIRA_TOOL_SOURCES "/completions/_ozmira";
constexpr const char* kFish = OZMIRA_TOOL_SOURCES "/completions/ozmira.fish";

std::string TextOf(const char* file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

bool HasWord(const std::string& text, const std::string& word) {
    return std::regex_search(text, std::regex("(^|[^a-z-])" + word + "($|[^a-z-])"));
}

} // namespace

TEST_F(ShellFiles, ListEveryCommandAndOption) {
    std::string manual = TextOf(OZMIRA_MANUAL);
    manual.erase(std::remove(manual.begin(), manual.end(), '\\'), manual.end());
    for (const std::string command :
         {"", "render", "check", "conform", "report", "catalogue", "diff", "info", "dump"}) {
        const std::set<std::string> options = Options(command);
        EXPECT_TRUE(options.contains("--help")) << command;
        for (const std::string& option : options) {
            EXPECT_TRUE(HasWord(manual, option)) << option;
            EXPECT_TRUE(HasWord(TextOf(kBash), option)) << option;
            EXPECT_TRUE(HasWord(TextOf(kZsh), option)) << option;
            const std::string fishOption =
                option.starts_with("--") ? "-l " + option.substr(2) : "-s " + option.substr(1);
            EXPECT_NE(TextOf(kFish).find(fishOption + " "), std::string::npos) << option;
        }
        for (const char* file : {OZMIRA_MANUAL, kBash, kZsh, kFish}) {
            EXPECT_TRUE(HasWord(TextOf(file), command)) << file << command;
        }
    }
    EXPECT_EQ(Options("render").size(), 18u);
    EXPECT_TRUE(manual.find("\"Ozmira " OZMIRA_VERSION "\"") != std::string::npos);
}

TEST_F(ShellFiles, AreWellFormed) {
    const struct {
        const char* program;
        const char* options;
        const char* file;
    } kChecks[] = {
        {"bash", "-n", kBash},
        {"zsh", "-n", kZsh},
        {"fish", "-n", kFish},
        {"mandoc", "-T lint -W warning", OZMIRA_MANUAL},
    };
    for (const auto& [program, options, file] : kChecks) {
        if (!Has(program)) continue;
        const std::string command = std::string(program) + " " + options + " '" + file + "'";
        const Outcome outcome = Run(command);
        EXPECT_EQ(outcome.exitCode, 0) << command << outcome.output << outcome.errors;
    }
}

TEST_F(ShellFiles, CompleteInBash) {
    Write("icon.svg", "");
    Write("icon.txt", "");
    Write("picture.png", "");
    const std::pair<const char*, const char*> kCases[] = {
        {"ren", "render"},
        {"render --sc", "--scale"},
        {"render --scale 1,2,", "1,2,3"},
        {"render ic", "icon.svg"},
        {"render -o icon.t", "icon.txt"},
        {"info --j", "--json"},
        {"dump i", "icon.svg"},
        {"conf", "conform"},
        {"check --sa", "--sarif"},
        {"conform --in", "--in-place"},
        {"repo", "report"},
        {"report --tit", "--title"},
        {"cata", "catalogue"},
        {"catalogue --te", "--template"},
        {"diff --thr", "--threshold"},
        {"diff pic", "picture.png"},
    };
    for (const auto& [line, completion] : kCases) {
        EXPECT_EQ(Run("source '" + std::string(kBash) + "'; COMP_WORDS=(ozmira " + line +
                      "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _ozmira; echo ${COMPREPLY[@]}")
                      .output,
                  completion + std::string("\n"))
            << line;
    }
}
