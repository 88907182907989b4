#pragma once

#include "rules/rules.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace ozm::conform {

/// Collects findings by their place. A rule is named once for each place, however often it is met.
class FindingList {
public:
    /// `detail` takes the place of "{}" in the rule's message.
    void Add(Rule rule, uint32_t offset, std::string_view detail = {});

    /// Some finding is of severity `Error` or `Warning`.
    bool HasDifferences() const { return m_hasDifferences; }
    /// Some finding can't be rewritten.
    bool HasRefusals() const { return m_hasRefusals; }
    bool HasErrors() const { return m_hasErrors; }

    /// The findings in the order of the text.
    std::vector<Finding> Take(std::string_view text);

private:
    struct Entry {
        uint32_t offset;
        Rule rule;
        std::string detail;
    };

    std::vector<Entry> m_entries;
    std::unordered_set<uint64_t> m_seen;
    bool m_hasDifferences = false, m_hasRefusals = false, m_hasErrors = false;
};

} // namespace ozm::conform
