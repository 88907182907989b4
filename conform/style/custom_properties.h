// Custom properties, and the values that refer to them.
#pragma once

#include "style/declarations.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace ozm::conform {

/// True when a value refers to a custom property.
bool HasVariable(std::string_view value);

/// The custom properties of one element and of those that it inherits from.
class CustomProperties {
public:
    /// `declarations` are the element's, and have to outlive this, as has `work`: what all values of a
    /// drawing may still cost. Without any left, every property is missing.
    CustomProperties(std::shared_ptr<const CustomProperties> outer, std::span<const Declaration> declarations,
                     uint64_t& work);

    /// The value with each `var()` replaced; null where a property is missing and has no fallback, or where
    /// properties refer to each other without end.
    std::optional<std::string> WriteOut(std::string_view value) const;

    /// Keeps a text as long as this lives.
    std::string_view Keep(std::string text) { return m_kept.emplace_back(std::move(text)); }

private:
    /// A value being written out, and how many references may still follow.
    struct Writing {
        std::string text;
        int referencesLeft;
    };

    bool Append(std::string_view value, int depth, Writing& out) const;
    bool AppendReference(std::string_view reference, int depth, Writing& out) const;
    bool Spend(uint64_t work) const;

    std::shared_ptr<const CustomProperties> m_outer;
    std::map<std::string_view, std::string_view> m_values; ///< By name.
    uint64_t& m_work;
    std::deque<std::string> m_kept;
};

} // namespace ozm::conform
