#pragma once

#include "source/document.h"

#include <expat.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace ozm::conform {

/// Builds the tree of a document with Expat. Used once.
class XMLReader {
public:
    explicit XMLReader(Document& document) : m_document(document) {}

    /// Throws `std::bad_alloc`.
    void Read();

private:
    /// A name as Expat gives it, in its parts.
    struct QualifiedName {
        std::string_view space, local, prefix;
    };

    template <auto Method, typename... Arguments>
    static void Handle(void* self, Arguments... arguments);
    void StartElement(const char* name, const char** attributes);
    void EndElement(const char* name);
    void CharacterData(const char* text, int length);
    void Comment(const char* text);
    void XMLDeclaration(const char* version, const char* encoding, int standalone);

    static QualifiedName Split(const char* name);
    std::span<const Attribute> ReadAttributes(const char** attributes, uint32_t offset, bool isWritten);
    void SetFault(XMLFault fault, const char* message);
    std::string_view Keep(std::string_view text);

    Document& m_document;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> m_parser{nullptr,
                                                                                           &XML_ParserFree};
    Node* m_open = nullptr;
    uint32_t m_depth = 0;
    Node* m_openText = nullptr; ///< The outermost `text` that is open.
    std::string m_characters;   ///< Of the open `style` or `title`.
    std::vector<Attribute> m_attributes;
    bool m_isOutOfMemory = false;
};

} // namespace ozm::conform
