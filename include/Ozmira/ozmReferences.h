#pragma once

#include <Ozmira/ozmDocument.h>

#include <cstdint>
#include <string_view>
#include <unordered_map>

namespace ozm {

/// Resolves the references of a document: finds elements by id. Where several elements have one id, the first
/// in document order is meant. Borrows the document, which must not change meanwhile.
class References {
public:
    /// Of no document: nothing may be searched for.
    References() = default;
    explicit References(const Document& document) : m_document(&document) {}

    /// The element with this id; null for the empty id and for an id that no element has.
    const Element* Find(std::string_view id);
    /// As `Find`, but the element's index in `Document::elements`, or `kNoElement`.
    uint64_t FindIndex(std::string_view id);

private:
    const Document* m_document = nullptr;
    /// Made by the first search in a document of many definitions; empty before.
    std::unordered_map<std::string_view, uint64_t> m_indexOfID;
};

} // namespace ozm
