#pragma once

#include "style/declarations.h"
#include "style/selector.h"

#include <memory_resource>
#include <span>
#include <string_view>
#include <vector>

namespace ozm::conform {

/// All style that a drawing's elements are given: by style sheets, attributes and `style` attributes.
class StyleSheets {
public:
    /// Reads the style sheets of the document, which has to outlive this.
    explicit StyleSheets(const Document& document);

    /// The declarations for an element in ascending order of precedence, valid or not. They live as long as
    /// this.
    std::span<const Declaration> Of(const Node& node);

private:
    struct Rule {
        Selector selector;
        size_t first, count; ///< Of the declarations.
        uint64_t precedence;
    };

    void ReadSheet(std::string_view text, uint32_t offset, int depth);
    size_t ReadAtRule(std::string_view text, size_t at, uint32_t offset, int depth);
    void Collect(const Node& node);
    void ReadRule(std::string_view selectors, std::string_view body, uint32_t offset);

    std::pmr::monotonic_buffer_resource m_memory;
    std::vector<Declaration> m_declarations;
    std::vector<Rule> m_rules;
    std::vector<std::span<const Declaration>> m_byNode; ///< Data is null until asked for.
    std::vector<Declaration> m_collected;
    uint64_t m_budget;
};

} // namespace ozm::conform
