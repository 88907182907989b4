#pragma once

#include <Ozmira/ozmElement.h>
#include <Ozmira/OzmiraExport.h>

#include <cstdint>
#include <string_view>
#include <unordered_map>

namespace ozm {

/// Finds the elements of a document by id. If several elements share an id, the first in document order is
/// found. Borrows the document, which must not change during the lifetime of this object.
class OZM_CXX_EXPORT References {
public:
    /// Without a document, nothing may be searched for.
    References() = default;
    explicit References(const Document& document) : m_document(&document) {}

    /// The element with this id; null for the empty id and for an id that no element has.
    const Element* Find(std::string_view id);
    /// As `Find`, but returns the element's index in `Document::elements`, or `kNoElement`.
    uint64_t FindIndex(std::string_view id);

private:
    const Document* m_document = nullptr;
    /// Built by the first search in a document of many definitions; empty until then.
    std::unordered_map<std::string_view, uint64_t> m_indexOfID;
};

} // namespace ozm
