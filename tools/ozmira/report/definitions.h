#pragma once

#include <Ozmira/ozmDocument.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace ozm::tool {

/// Finds elements by id, the first one of an id winning, as drawing does. Borrows the document.
class Definitions {
public:
    explicit Definitions(const Document& document) {
        m_indices.reserve(document.definitions.size());
        for (const Definition& definition : document.definitions) {
            m_indices.emplace(definition.id, definition.elementIndex);
        }
    }

    /// Index of the element with this id; nothing for the empty id and for one that nobody has.
    std::optional<uint64_t> Find(std::string_view id) const {
        const auto found = id.empty() ? m_indices.end() : m_indices.find(id);
        return found == m_indices.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::unordered_map<std::string_view, uint64_t> m_indices;
};

} // namespace ozm::tool
