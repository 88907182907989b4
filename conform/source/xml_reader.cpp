#include "source/xml_reader.h"

#include "base/limits.h"
#include "source/tag_scanner.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstring>
#include <new>

namespace ozm::conform {
namespace {

constexpr std::string_view kSVG = "http://www.w3.org/2000/svg";
constexpr std::string_view kXLink = "http://www.w3.org/1999/xlink";
/// Between the parts of a name. No namespace in use has a line break in its name.
constexpr char kSeparator = '\n';

bool IsBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == std::string_view::npos; }

/// True for comments that say who may use the drawing.
bool IsLicence(std::string_view comment) {
    if (comment.starts_with('!')) return true;
    std::string lower(comment);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    for (const char* const word : {"licen", "copyright", "(c)", "\xC2\xA9"}) {
        if (lower.find(word) != std::string::npos) return true;
    }
    return false;
}

} // namespace

/// Expat is C: nothing may be thrown through it.
template <auto Method, typename... Arguments>
void XMLReader::Handle(void* self, Arguments... arguments) {
    XMLReader& reader = *static_cast<XMLReader*>(self);
    if (reader.m_isOutOfMemory || reader.m_document.m_fault != XMLFault::None) return;
    try {
        (reader.*Method)(arguments...);
    } catch (const std::bad_alloc&) {
        reader.m_isOutOfMemory = true;
        XML_StopParser(reader.m_parser.get(), XML_FALSE);
    }
}

void XMLReader::Read() {
    const std::string_view text = m_document.m_text;
    if (text.size() > INT_MAX / 2) {
        m_document.m_fault = XMLFault::TooLarge;
        return;
    }
    m_parser.reset(XML_ParserCreateNS(nullptr, kSeparator));
    if (!m_parser) throw std::bad_alloc();
    XML_Parser parser = m_parser.get();
    XML_SetReturnNSTriplet(parser, 1);
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, &Handle<&XMLReader::StartElement, const char*, const char**>,
                          &Handle<&XMLReader::EndElement, const char*>);
    XML_SetCharacterDataHandler(parser, &Handle<&XMLReader::CharacterData, const char*, int>);
    XML_SetCommentHandler(parser, &Handle<&XMLReader::Comment, const char*>);
    XML_SetXmlDeclHandler(parser, &Handle<&XMLReader::XMLDeclaration, const char*, const char*, int>);
    const XML_Status status = XML_Parse(parser, text.data(), static_cast<int>(text.size()), XML_TRUE);
    const XML_Error error = XML_GetErrorCode(parser);
    if (m_isOutOfMemory || error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
    if (text.starts_with("\xFE\xFF") || text.starts_with("\xFF\xFE")) m_document.m_isUTF8 = false;
    if (status == XML_STATUS_OK && m_document.m_fault == XMLFault::None) return;
    m_document.m_root = nullptr;
    if (m_document.m_fault == XMLFault::None) {
        m_document.m_fault = XMLFault::IllFormed;
        m_document.m_faultMessage = XML_ErrorString(error);
        m_document.m_faultOffset =
            static_cast<uint32_t>(std::max<XML_Index>(0, XML_GetCurrentByteIndex(parser)));
    }
}

void XMLReader::SetFault(XMLFault fault, const char* message) {
    m_document.m_fault = fault;
    m_document.m_faultMessage = message;
    m_document.m_faultOffset = static_cast<uint32_t>(XML_GetCurrentByteIndex(m_parser.get()));
    XML_StopParser(m_parser.get(), XML_FALSE);
}

std::string_view XMLReader::Keep(std::string_view text) {
    if (text.empty()) return {};
    char* const copy = static_cast<char*>(m_document.m_memory.allocate(text.size(), 1));
    std::memcpy(copy, text.data(), text.size());
    return {copy, text.size()};
}

XMLReader::QualifiedName XMLReader::Split(const char* name) {
    const std::string_view text = name;
    const size_t first = text.find(kSeparator);
    if (first == std::string_view::npos) return {{}, text, {}};
    const size_t second = text.find(kSeparator, first + 1);
    if (second == std::string_view::npos) return {text.substr(0, first), text.substr(first + 1), {}};
    return {text.substr(0, first), text.substr(first + 1, second - first - 1), text.substr(second + 1)};
}

std::span<const Attribute> XMLReader::ReadAttributes(const char** attributes, uint32_t offset,
                                                     bool isWritten) {
    m_attributes.clear();
    TagScanner scanner(m_document.m_text, offset);
    int written = isWritten ? XML_GetSpecifiedAttributeCount(m_parser.get()) : 0;
    for (const char** at = attributes; *at; at += 2) {
        const QualifiedName name = Split(at[0]);
        const std::string_view value = at[1];
        Attribute attribute;
        if (name.space.empty()) {
            attribute.attr = AttrOf(name.local);
        } else if (name.space == kXLink && name.local == "href") {
            attribute.attr = Attr::Href;
        }
        attribute.offset = attribute.valueOffset = offset;
        if (written > 0) {
            written -= 2;
            bool isFound = scanner.Next();
            while (isFound && (scanner.Name() == "xmlns" || scanner.Name().starts_with("xmlns:"))) {
                isFound = scanner.Next();
            }
            if (isFound) {
                attribute.name = scanner.Name();
                attribute.raw = scanner.Value();
                attribute.offset = static_cast<uint32_t>(scanner.NameOffset());
                attribute.valueOffset = static_cast<uint32_t>(scanner.ValueOffset());
            }
        } else if (name.prefix.empty()) {
            attribute.name = Keep(name.local);
        }
        attribute.value = attribute.raw == value && !attribute.name.empty() ? attribute.raw : Keep(value);
        m_attributes.push_back(attribute);
    }
    if (m_attributes.empty()) return {};
    Attribute* const kept = static_cast<Attribute*>(
        m_document.m_memory.allocate(m_attributes.size() * sizeof(Attribute), alignof(Attribute)));
    std::uninitialized_copy(m_attributes.begin(), m_attributes.end(), kept);
    return {kept, m_attributes.size()};
}

void XMLReader::StartElement(const char* fullName, const char** attributes) {
    if (++m_depth > kMaximumDepth) return SetFault(XMLFault::TooDeep, "elements nest too deeply");
    const QualifiedName name = Split(fullName);
    const bool isSVG = name.space == kSVG || name.space.empty();
    if (!m_open && (!isSVG || name.local != "svg")) return SetFault(XMLFault::NoSVG, "");

    Node& node = *new (m_document.m_memory.allocate(sizeof(Node), alignof(Node))) Node();
    node.tag = isSVG ? TagOf(name.local) : Tag::Foreign;
    node.offset = static_cast<uint32_t>(std::max<XML_Index>(0, XML_GetCurrentByteIndex(m_parser.get())));
    const bool isWritten = node.offset < m_document.m_text.size() && m_document.m_text[node.offset] == '<';
    node.isPlain = isWritten && name.prefix.empty();
    node.localName = Keep(name.local);
    node.index = m_document.m_nodeCount++;
    node.attributes = ReadAttributes(attributes, node.offset, isWritten);
    node.parent = m_open;
    if (m_open) {
        node.previousSibling = m_open->lastChild;
        (m_open->lastChild ? m_open->lastChild->nextSibling : m_open->firstChild) = &node;
        m_open->lastChild = &node;
        node.childIndex = node.previousSibling ? node.previousSibling->childIndex + 1 : 0;
    } else {
        m_document.m_root = &node;
        m_document.m_hasNamespace = !name.space.empty();
    }
    if (const Attribute* const id = node.Find(Attr::Id); id && !id->value.empty()) {
        m_document.m_ids.try_emplace(id->value, &node);
    }
    if (node.tag == Tag::Style) m_document.m_sheets.push_back(&node);
    if (node.tag == Tag::Text && !m_openText) m_openText = &node;
    m_characters.clear();
    m_open = &node;
}

void XMLReader::EndElement(const char*) {
    if ((m_open->tag == Tag::Style || m_open->tag == Tag::Title) && !m_characters.empty()) {
        m_open->text = Keep(m_characters);
        m_characters.clear();
    }
    if (m_open == m_openText) m_openText = nullptr;
    m_open = m_open->parent;
    --m_depth;
}

void XMLReader::CharacterData(const char* text, int length) {
    const std::string_view characters(text, static_cast<size_t>(length));
    if (m_openText && !m_openText->hasText && !IsBlank(characters)) m_openText->hasText = true;
    if (!m_open || (m_open->tag != Tag::Style && m_open->tag != Tag::Title)) return;
    if (m_characters.empty()) {
        m_open->textOffset = static_cast<uint32_t>(XML_GetCurrentByteIndex(m_parser.get()));
    }
    m_characters += characters;
}

void XMLReader::Comment(const char* text) {
    if (IsLicence(text)) m_document.m_comments.push_back(Keep(text));
}

void XMLReader::XMLDeclaration(const char*, const char* encoding, int) {
    if (!encoding) return;
    std::string name = encoding;
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    // Other single-byte encodings agree with UTF-8 as long as only ASCII is written, which values are.
    if (name.starts_with("utf-16")) m_document.m_isUTF8 = false;
}

} // namespace ozm::conform
