#include "rules/finding_list.h"

#include "source/text_places.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace ozm::conform {
namespace {

std::string MessageOf(const RuleInfo& rule, std::string_view detail) {
    std::string message(rule.message);
    if (const size_t at = message.find("{}"); at != std::string::npos) message.replace(at, 2, detail);
    return message;
}

} // namespace

void FindingList::Add(Rule rule, uint32_t offset, std::string_view detail) {
    if (!m_seen.insert(uint64_t{offset} << 8 | static_cast<uint64_t>(rule)).second) return;
    const RuleInfo& info = InfoOf(rule);
    m_hasDifferences |= info.severity != Severity::Note;
    m_hasErrors |= info.severity == Severity::Error;
    m_hasRefusals |= !info.isConvertible;
    m_entries.push_back({offset, rule, std::string(detail)});
}

std::vector<Finding> FindingList::Take(std::string_view text) {
    std::sort(m_entries.begin(), m_entries.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.offset, a.rule) < std::tie(b.offset, b.rule);
    });
    TextPlaces places(text);
    std::vector<Finding> findings;
    findings.reserve(m_entries.size());
    for (const Entry& entry : m_entries) {
        const RuleInfo& rule = InfoOf(entry.rule);
        places.GoTo(entry.offset);
        findings.push_back({places.Line(), places.Column(), rule.id, rule.severity,
                            MessageOf(rule, entry.detail), rule.remedy, rule.isConvertible});
    }
    return findings;
}

} // namespace ozm::conform
