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

    /// What writing out custom properties may still cost.
    uint64_t& VariableWork() { return m_variableWork; }

    /// True once so many selectors were tried, or properties written out, that the rest is left out.
    bool IsExhausted() const { return m_selectorTests == 0 || m_variableWork == 0; }

private:
    struct Rule {
        Selector selector;
        size_t first, count; ///< Of the declarations.
        uint64_t precedence;
    };

    /// Where a part of a style sheet stands.
    struct Nesting {
        int depth = 0;          ///< In at-rules.
        bool isInLayer = false; ///< Rules outside of layers take precedence over those in one.
    };

    void ReadSheet(std::string_view text, uint32_t offset, Nesting nesting);
    size_t ReadAtRule(std::string_view text, size_t at, uint32_t offset, Nesting nesting);
    void Collect(const Node& node);
    void ReadRule(std::string_view selectors, std::string_view body, uint32_t offset, bool isInLayer);

    std::pmr::monotonic_buffer_resource m_memory;
    std::vector<Declaration> m_declarations;
    std::vector<Rule> m_rules;
    std::vector<std::span<const Declaration>> m_byNode; ///< Data is null until asked for.
    std::vector<Declaration> m_collected;
    uint64_t m_selectorTests, m_variableWork; ///< How many more there may be.
};

} // namespace ozm::conform
