#include "conform_cases.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string_view>

namespace ozm::conform::test {
namespace {

std::string File(std::string_view text) {
    return text.starts_with("<svg xmlns") ? std::string(text) : DrawingWithLinks(std::string(text));
}

std::string ResultFile(std::string_view text) {
    return (text.starts_with("<svg xmlns") ? std::string(text) : Drawing(std::string(text))) + "\n";
}

void ExpectCase(const Case& test) {
    SCOPED_TRACE(test.body);
    const std::string drawing = File(test.body);
    const Result result = Conform(drawing);
    EXPECT_EQ(RulesOf(result.findings), test.rules);
    EXPECT_EQ(RulesOf(Check(drawing)), test.rules);
    EXPECT_EQ(result.isRefused, test.result == nullptr);
    if (!test.result) {
        EXPECT_EQ(result.text, "");
        return;
    }
    const bool isSame = std::strcmp(test.result, kSame) == 0;
    EXPECT_EQ(result.isChanged, !isSame);
    EXPECT_EQ(result.text, isSame ? drawing : ResultFile(test.result));

    const Result again = Conform(result.text);
    EXPECT_FALSE(HasDifference(again.findings)) << RulesOf(again.findings) << ": " << result.text;
    EXPECT_EQ(again.text, result.text);
}

} // namespace

std::string Drawing(const std::string& body) {
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 24\">" + body + "</svg>";
}

std::string DrawingWithLinks(const std::string& body) {
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
           "viewBox=\"0 0 24 24\">" +
           body + "</svg>";
}

std::string RulesOf(const std::vector<Finding>& findings) {
    std::string rules;
    for (const Finding& finding : findings) {
        if (!rules.empty()) rules += ' ';
        rules += finding.rule;
    }
    return rules;
}

bool HasDifference(const std::vector<Finding>& findings) {
    for (const Finding& finding : findings) {
        if (finding.severity != Severity::Note) return true;
    }
    return false;
}

void ExpectCases(std::span<const Case> cases) {
    for (const Case& test : cases) ExpectCase(test);
}

void ExpectUnchanged(std::span<const char* const> bodies) {
    for (const char* const body : bodies) ExpectCase({body, "", kSame});
}

} // namespace ozm::conform::test
