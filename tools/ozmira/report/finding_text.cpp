#include "report/finding_text.h"

#include "base/text.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace ozm::tool {
namespace {

std::string MessageAndRemedy(const conform::Finding& finding) {
    return OnOneLine(ValidUTF8(finding.message)) + "; " + std::string(finding.remedy);
}

/// The text with what would end it, or a property, replaced.
std::string EscapeForGitHub(std::string_view text, bool isProperty) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '%': escaped += "%25"; break;
        case '\r': escaped += "%0D"; break;
        case '\n': escaped += "%0A"; break;
        case ':': escaped += isProperty ? "%3A" : ":"; break;
        case ',': escaped += isProperty ? "%2C" : ","; break;
        default: escaped += c; break;
        }
    }
    return escaped;
}

} // namespace

std::string DescribeFinding(const std::string& source, const conform::Finding& finding) {
    std::string text = InputName(source);
    text += ':' + std::to_string(finding.line) + ':' + std::to_string(finding.column) + ": ";
    text += conform::SeverityName(finding.severity);
    text += ": " + MessageAndRemedy(finding) + " [";
    text += finding.rule;
    text += ']';
    return text;
}

std::string DescribeRefusal(const std::string& source, std::span<const conform::Finding> findings) {
    std::string text;
    size_t more = 0;
    for (const conform::Finding& finding : findings) {
        if (finding.isConvertible) continue;
        if (text.empty()) {
            text = DescribeFinding(source, finding);
        } else {
            ++more;
        }
    }
    return more == 0 ? text : text + ", and " + CountOf(more, "more reason");
}

std::string GitHubAnnotation(const std::string& source, const conform::Finding& finding) {
    const bool isNote = finding.severity == conform::Severity::Note;
    std::string text = "::";
    text += isNote ? "notice" : conform::SeverityName(finding.severity);
    text += " file=" + EscapeForGitHub(source, true);
    text += ",line=" + std::to_string(finding.line) + ",col=" + std::to_string(finding.column);
    text += ",title=ozmira " + EscapeForGitHub(finding.rule, true);
    text += "::" + EscapeForGitHub(MessageAndRemedy(finding), false);
    return text;
}

bool HasDifferences(std::span<const conform::Finding> findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const conform::Finding& f) { return f.severity != conform::Severity::Note; });
}

void FindingCounts::Add(std::span<const conform::Finding> findings) {
    ++m_files;
    if (HasDifferences(findings)) ++m_differentFiles;
    for (const conform::Finding& finding : findings) {
        if (finding.severity == conform::Severity::Note) continue;
        Count& count = m_rules[finding.rule];
        count.remedy = finding.remedy;
        ++count.places;
        if (std::exchange(count.lastFile, m_files) != m_files) ++count.files;
    }
}

void FindingCounts::ForEachRule(
    const std::function<void(std::string_view, std::string_view, uint64_t, uint64_t)>& visit) const {
    std::vector<std::pair<std::string_view, Count>> rules(m_rules.begin(), m_rules.end());
    std::stable_sort(rules.begin(), rules.end(),
                     [](const auto& a, const auto& b) { return a.second.files > b.second.files; });
    for (const auto& [rule, count] : rules) visit(rule, count.remedy, count.files, count.places);
}

} // namespace ozm::tool
