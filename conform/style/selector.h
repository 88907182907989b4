#pragma once

#include "source/document.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace ozm::conform {

struct Selector;

/// A condition on one element.
struct SimpleSelector {
    enum class Kind : uint8_t {
        Type,
        Class,
        Id,
        HasAttribute,
        AttributeIs,
        AttributeHasWord,
        AttributeHasPrefix,
        AttributeHasSuffix,
        AttributeContains,
        AttributeHasDash,
        NthChild,
        NthLastChild,
        NthOfType,
        NthLastOfType,
        Root,
        AnyOf,
        NoneOf,
        Never,
    };
    Kind kind;
    std::string_view name, value;
    int step = 0, start = 1; ///< Of the children that count: `start`, and every `step`th from there on.
    std::shared_ptr<const std::vector<Selector>> list = nullptr; ///< Of `AnyOf` and `NoneOf`.
};

/// How an element relates to the one of the compound selector before it.
enum class Combinator : uint8_t { Descendant, Child, NextSibling, LaterSibling };

struct CompoundSelector {
    Combinator combinator = Combinator::Descendant;
    std::vector<SimpleSelector> conditions; ///< None: any element.
};

struct Selector {
    std::vector<CompoundSelector> compounds;
    uint32_t specificity = 0; ///< Ids, then classes and attributes, then types, a byte each.
};

/// Reads a list of selectors that commas separate; false where a part of it is not known, as no element is
/// then to be matched.
bool ReadSelectorList(std::string_view text, std::vector<Selector>& list);

/// Each comparison takes one off `budget`; without any left nothing matches.
bool Matches(const Selector& selector, const Node& node, uint64_t& budget);

} // namespace ozm::conform
