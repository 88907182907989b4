#pragma once

#include "source/document.h"

#include <cstdint>
#include <memory_resource>
#include <string_view>
#include <vector>

namespace ozm::conform {

/// Where a declaration stands, in ascending order of precedence.
enum class Origin : uint8_t { Attribute, StyleSheet, StyleAttribute };

/// A value for a property.
struct Declaration {
    Attr property = Attr::Other;
    Origin origin = Origin::Attribute;
    bool isImportant = false;
    bool hasVariable = false;    ///< `var()` is in the value.
    std::string_view name;       ///< Of a custom property alone.
    std::string_view value;      ///< Trimmed, without comments.
    uint32_t offset = 0;         ///< Byte of the declaration in the text of the drawing.
    uint64_t precedence = 0;     ///< Of a style sheet's rule: specificity, then order.
    const Node* owner = nullptr; ///< The element that it applies to.
};

/// Reads the declarations of a `style` attribute or of a rule in a style sheet. `index` of each is its byte
/// in `text`. Values with comments are rebuilt in `memory`. Unknown properties are left out.
void ReadDeclarations(std::string_view text, std::pmr::memory_resource& memory,
                      std::vector<Declaration>& declarations);

/// A value, trimmed and without the comments in it; rebuilt in `memory` where it had any.
std::string_view WithoutComments(std::string_view text, std::pmr::memory_resource& memory);

} // namespace ozm::conform
