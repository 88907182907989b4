// Findings as lines of text, and how many there are of each rule.
#pragma once

#include <OzmiraConform/OzmiraConform.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>

namespace ozm::tool {

/// The rule of the finding that stands for a file that can't be read.
inline constexpr std::string_view kUnreadableRule = "unreadable";

/// A finding on one line: "FILE:LINE:COLUMN: warning: MESSAGE; REMEDY [RULE]".
std::string DescribeFinding(const std::string& source, const conform::Finding& finding);

/// Why a drawing was refused: the first finding that can't be rewritten, and how many more there are.
std::string DescribeRefusal(const std::string& source, std::span<const conform::Finding> findings);

/// A finding as an annotation of GitHub's: "::warning file=...,line=...,col=...,title=...::MESSAGE; REMEDY".
std::string GitHubAnnotation(const std::string& source, const conform::Finding& finding);

/// True when some finding is an error or a warning.
bool HasDifferences(std::span<const conform::Finding> findings);

/// How many files and places the errors and warnings of each rule concern.
class FindingCounts {
public:
    /// Counts a file and its findings.
    void Add(std::span<const conform::Finding> findings);

    uint64_t Files() const { return m_files; }
    /// Those with an error or a warning.
    uint64_t DifferentFiles() const { return m_differentFiles; }

    /// Calls `visit` for each rule that was met, the one of most files first.
    void ForEachRule(const std::function<void(std::string_view rule, std::string_view remedy, uint64_t files,
                                              uint64_t places)>& visit) const;

private:
    struct Count {
        std::string_view remedy;
        uint64_t files = 0, places = 0;
        uint64_t lastFile = 0; ///< The number of the last file that was counted.
    };

    uint64_t m_files = 0, m_differentFiles = 0;
    std::map<std::string_view, Count> m_rules;
};

} // namespace ozm::tool
