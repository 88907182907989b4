#include "tool_test.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace ozm::test {
namespace {

fs::path MakeFolder() {
    std::string name = (fs::temp_directory_path() / "ozmira-tool-XXXXXX").string();
    if (!::mkdtemp(name.data())) std::abort();
    return name;
}

std::string ReadFile(const fs::path& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

} // namespace

const char* const kTwoHalves = R"(<svg viewBox="0 0 4 2"><rect width="2" height="2"/>)"
                               R"(<rect x="2" width="2" height="2" fill="red"/></svg>)";

// Output and errors are stored next to the folder, so that they are not among its files.
ToolTest::ToolTest() : m_folder(MakeFolder() / "work") { fs::create_directory(m_folder); }

ToolTest::~ToolTest() { fs::remove_all(m_folder.parent_path()); }

Outcome ToolTest::Run(const std::string& command) const {
    const std::string outside = m_folder.parent_path().string();
    std::ofstream(outside + "/script")
        << "ozmira() { '" OZMIRA_TOOL "' \"$@\"; }\ncd '" << m_folder.string() << "'\n{\n"
        << command << "\n} > ../out 2> ../err < /dev/null\n";
    const int status = std::system(("bash '" + outside + "/script'").c_str());
    Outcome outcome;
    outcome.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    outcome.output = ReadFile(outside + "/out");
    outcome.errors = ReadFile(outside + "/err");
    return outcome;
}

void ToolTest::Write(const std::string& name, const std::string& content) const {
    fs::create_directories((m_folder / name).parent_path());
    std::ofstream(m_folder / name, std::ios::binary) << content;
}

std::string ToolTest::Read(const std::string& name) const { return ReadFile(m_folder / name); }

std::string ToolTest::Files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(m_folder)) {
        const std::string extension = entry.path().extension().string();
        if (entry.is_regular_file() && extension != ".svg" && extension != ".SVG" && extension != ".svgz") {
            names.push_back(entry.path().lexically_relative(m_folder).string());
        }
    }
    std::sort(names.begin(), names.end());
    std::string joined;
    for (const std::string& name : names) joined += (joined.empty() ? "" : " ") + name;
    return joined;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

} // namespace ozm::test
