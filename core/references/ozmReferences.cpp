#include <Ozmira/ozmReferences.h>

#include <utility>

namespace ozm {
namespace {

/// Up to this number of definitions, a linear search is as fast as a hash map.
constexpr size_t kMaxLinearSearch = 32;

} // namespace

uint64_t References::FindIndex(std::string_view id) {
    if (id.empty()) return kNoElement;
    const std::vector<Definition>& definitions = m_document->definitions;
    if (definitions.size() <= kMaxLinearSearch) {
        for (const Definition& definition : definitions) {
            if (definition.id == id) return definition.elementIndex;
        }
        return kNoElement;
    }
    if (m_indexOfID.empty()) {
        decltype(m_indexOfID) indexOfID(definitions.size());
        for (const Definition& definition : definitions) {
            indexOfID.try_emplace(definition.id, definition.elementIndex);
        }
        m_indexOfID = std::move(indexOfID);
    }
    const auto found = m_indexOfID.find(id);
    return found == m_indexOfID.end() ? kNoElement : found->second;
}

const Element* References::Find(std::string_view id) {
    const uint64_t index = FindIndex(id);
    return index == kNoElement ? nullptr : &m_document->elements[index];
}

} // namespace ozm
