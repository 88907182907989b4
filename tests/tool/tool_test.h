#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ozm::test {

/// What a command did.
struct Outcome {
    int exitCode = 0; ///< 128 + signal when a signal ended it, as shells count.
    std::string output;
    std::string errors;
};

/// Runs the tool as a process, in a folder of its own that is removed afterwards.
class ToolTest : public testing::Test {
protected:
    ToolTest();
    ~ToolTest() override;

    /// Runs commands of bash in the folder; `ozmira` is the tool.
    Outcome Run(const std::string& command) const;

    void Write(const std::string& name, const std::string& content) const;
    std::string Read(const std::string& name) const;
    /// All files under the folder but drawings, sorted, joined by blanks.
    std::string Files() const;

    const std::filesystem::path m_folder;
};

/// A drawing of 4 x 2 points whose left half is filled with whatever is the default and whose right half is
/// red.
extern const char* const kTwoHalves;

/// The lines of a text.
std::vector<std::string> Lines(const std::string& text);

} // namespace ozm::test
