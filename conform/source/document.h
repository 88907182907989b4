// A drawing as a tree of elements with their places in the text.
#pragma once

#include "source/names.h"

#include <cstdint>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ozm::conform {

/// One attribute of a start tag.
struct Attribute {
    Attr attr = Attr::Other;
    std::string_view name;    ///< As written, with its prefix; empty for a default from the DOCTYPE.
    std::string_view value;   ///< Entities replaced, tabs and line breaks turned into spaces.
    std::string_view raw;     ///< The text between the quotes, which is what Ozmira reads.
    uint32_t offset = 0;      ///< Byte of the name in the text.
    uint32_t valueOffset = 0; ///< Byte of the value's first character.
};

/// One element.
struct Node {
    Tag tag = Tag::Other;
    /// Ozmira sees the element under this name: no prefix before it, and written in the text, not in an
    /// entity.
    bool isPlain = true;
    bool hasText = false;    ///< Of `text`: something other than spaces is in it.
    uint32_t offset = 0;     ///< Byte of the start tag.
    uint32_t index = 0;      ///< Among all elements, in the order of the text.
    uint32_t childIndex = 0; ///< Among the elements of the parent.
    std::string_view localName;
    std::span<const Attribute> attributes;
    std::string_view text;   ///< Of `style` and `title`: the text in it.
    uint32_t textOffset = 0; ///< Byte of that text.
    Node* parent = nullptr;
    Node* firstChild = nullptr;
    Node* lastChild = nullptr;
    Node* nextSibling = nullptr;
    Node* previousSibling = nullptr;

    /// The attribute, or null.
    const Attribute* Find(Attr attr) const;
    /// Its value, or `otherwise` when there is none.
    std::string_view Get(Attr attr, std::string_view otherwise = {}) const;
    bool Has(Attr attr) const { return Find(attr) != nullptr; }
    /// The value of `href`, before that of `xlink:href`, without the "#"; empty when it names no element of
    /// this text.
    std::string_view LocalReference() const;
};

/// Why a text is no drawing.
enum class XMLFault : uint8_t { None, IllFormed, TooDeep, TooLarge, NoSVG };

/// A drawing's elements, or why there are none.
class Document {
public:
    /// Reads XML text, which has to outlive the document.
    explicit Document(std::string_view text);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    XMLFault Fault() const { return m_fault; }
    uint32_t FaultOffset() const { return m_faultOffset; }
    const char* FaultMessage() const { return m_faultMessage; }

    std::string_view Text() const { return m_text; }
    /// Null after a fault.
    const Node* Root() const { return m_root; }
    uint32_t NodeCount() const { return m_nodeCount; }
    /// The first element with this id, or null.
    const Node* FindById(std::string_view id) const;
    /// The `style` elements in order.
    std::span<const Node* const> StyleSheets() const { return m_sheets; }
    /// The comments that have to stay: of a licence, or beginning with "!".
    std::span<const std::string_view> LicenceComments() const { return m_comments; }
    /// The root is of SVG's namespace, not of none.
    bool HasNamespace() const { return m_hasNamespace; }
    /// Written in UTF-8, the only encoding that Ozmira reads.
    bool IsUTF8() const { return m_isUTF8; }

private:
    friend class XMLReader;

    std::string_view m_text;
    std::pmr::monotonic_buffer_resource m_memory{8192};
    XMLFault m_fault = XMLFault::None;
    uint32_t m_faultOffset = 0;
    const char* m_faultMessage = "";
    Node* m_root = nullptr;
    uint32_t m_nodeCount = 0;
    bool m_hasNamespace = true;
    bool m_isUTF8 = true;
    std::unordered_map<std::string_view, const Node*> m_ids;
    std::vector<const Node*> m_sheets;
    std::vector<std::string_view> m_comments;
};

} // namespace ozm::conform
