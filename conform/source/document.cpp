#include "source/document.h"

#include "source/xml_reader.h"

#include <charconv>

namespace ozm::conform {
namespace {

/// A name from a URL, in which characters may be written as "%" and two hexadecimal digits.
std::string WithoutEscapes(std::string_view name) {
    std::string plain;
    for (size_t i = 0; i < name.size(); ++i) {
        unsigned char byte = 0;
        const char* const digits = name.data() + i + 1;
        const bool isEscape = name[i] == '%' && name.size() - i > 2 &&
                              std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
        plain += isEscape ? static_cast<char>(byte) : name[i];
        if (isEscape) i += 2;
    }
    return plain;
}

} // namespace

const Attribute* Node::Find(Attr attr) const {
    for (const Attribute& attribute : attributes) {
        if (attribute.attr == attr) return &attribute;
    }
    return nullptr;
}

std::string_view Node::Get(Attr attr, std::string_view otherwise) const {
    const Attribute* const attribute = Find(attr);
    return attribute ? attribute->value : otherwise;
}

std::string_view Node::LocalReference() const {
    const Attribute* best = nullptr;
    for (const Attribute& attribute : attributes) {
        if (attribute.attr == Attr::Href && (!best || attribute.name == "href")) best = &attribute;
    }
    if (!best) return {};
    std::string_view value = best->value;
    while (value.starts_with(' ')) value.remove_prefix(1);
    while (value.ends_with(' ')) value.remove_suffix(1);
    return value.starts_with('#') ? value.substr(1) : std::string_view();
}

Document::Document(std::string_view text) : m_text(text) { XMLReader(*this).Read(); }

const Node* Document::FindById(std::string_view id) const {
    auto found = m_ids.find(id);
    if (found == m_ids.end() && id.find('%') != std::string_view::npos) {
        found = m_ids.find(WithoutEscapes(id));
    }
    return found == m_ids.end() ? nullptr : found->second;
}

} // namespace ozm::conform
