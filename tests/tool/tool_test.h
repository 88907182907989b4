#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ozm::test {

/// The result of a command.
struct Outcome {
    int exitCode = 0; ///< As in shells: 128 + the signal's number if a signal ended the command.
    std::string output;
    std::string errors;
};

/// Runs the tool as a process, in a temporary folder.
class ToolTest : public testing::Test {
protected:
    ToolTest();
    ~ToolTest() override;

    /// Runs a bash script in the folder. In it, `ozmira` is the tool.
    Outcome Run(const std::string& command) const;

    void Write(const std::string& name, const std::string& content) const;
    std::string Read(const std::string& name) const;
    /// The names of all files under the folder except drawings, sorted and separated by blanks.
    std::string Files() const;

    const std::filesystem::path m_folder;
};

/// A drawing of 4 x 2 points. Its left half has the default fill colour, its right half is red.
extern const char* const kTwoHalves;

/// Splits a text into lines.
std::vector<std::string> Lines(const std::string& text);

} // namespace ozm::test
