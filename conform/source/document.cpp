#include "source/document.h"

#include "source/xml_reader.h"

namespace ozm::conform {

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
    const auto found = m_ids.find(id);
    return found == m_ids.end() ? nullptr : found->second;
}

} // namespace ozm::conform
