#pragma once

#include "source/document.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace ozm::conform {

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
        FirstChild,
        LastChild,
        OnlyChild,
        Root,
    };
    Kind kind;
    std::string_view name, value;
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

/// Reads one selector without the commas of a list; none where a part of it is not known, as no element is
/// then to be matched.
std::optional<Selector> ReadSelector(std::string_view text);

/// Each comparison takes one off `budget`; without any left nothing matches.
bool Matches(const Selector& selector, const Node& node, uint64_t& budget);

} // namespace ozm::conform
