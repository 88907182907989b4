// The page on differences lists every rule.
#include <OzmiraConform/OzmiraConform.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

using namespace ozm::conform;

namespace {

/// The anchor that a heading of Markdown gets.
std::string AnchorOf(std::string heading) {
    heading.erase(0, heading.find_first_not_of("# "));
    for (char& c : heading)
        c = c == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return heading;
}

/// The text with tags and colours as code.
std::string WithCode(std::string_view text) {
    return std::regex_replace(std::string(text), std::regex("<[a-z]+>|#[a-z]+"), "`$&`");
}

/// The row of the page's table for a rule, whose section has this heading.
std::string RowOf(const RuleInfo& rule, const std::string& section) {
    std::string message(rule.message);
    if (const size_t at = message.find("{}"); at != std::string::npos) message.replace(at, 2, "…");
    return "| `" + std::string(rule.id) + "` | " + std::string(SeverityName(rule.severity)) + " | " +
           section + " | " + WithCode(message) + " | " + WithCode(rule.remedy) + " | " +
           (rule.isConvertible ? "yes" : "no") + " |";
}

} // namespace

TEST(Rules, StandOnThePageOfDifferences) {
    std::ifstream page(OZMIRA_DIFFERENCES_PAGE);
    std::map<std::string, std::string> sections; // heading by anchor
    std::vector<std::string> rows, expected;
    bool isInTable = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("## ")) {
            isInTable = line == "## Rules";
            sections[AnchorOf(line)] = line.substr(3);
        }
        if (isInTable && line.starts_with("| `")) rows.push_back(line);
    }
    for (const RuleInfo& rule : Rules()) {
        const std::string anchor(rule.anchor);
        EXPECT_TRUE(sections.contains(anchor)) << rule.id << " points to " << anchor;
        expected.push_back(RowOf(rule, sections[anchor]));
    }
    EXPECT_EQ(rows, expected);
}
