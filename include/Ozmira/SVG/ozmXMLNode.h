#pragma once

#include <Ozmira/ozmStringUtils.h>

#include <rapidxml/rapidxml.hpp>

namespace ozm {

/// One attribute of an element node. An attribute without a value has the empty view.
struct XMLAttribute {
    StringView name;
    StringView value;
};

/// A non-owning view of one element node, or of none. Valid while the XML document and its text exist. With
/// the parser's flags, every node of the tree is an element.
class XMLNode {
public:
    /// `node` may be null.
    explicit XMLNode(const rapidxml::xml_node<char>* node) : m_node(node) {}

    /// False past the last sibling and for the first child of a node without children. No other function may
    /// be called then.
    explicit operator bool() const { return m_node != nullptr; }

    /// The name of the element, with its prefix.
    StringView Name() const { return {m_node->name(), m_node->name_size()}; }
    /// The first child element, if any.
    XMLNode FirstChild() const { return XMLNode(m_node->first_node()); }
    /// The next element with the same parent, if any. Must not be called for a node without
    /// a parent.
    XMLNode NextSibling() const { return XMLNode(m_node->next_sibling()); }

    /// Stores the value of the first attribute with exactly this name. Returns false, leaving `value`
    /// unchanged, if there is none.
    bool FindAttribute(std::string_view name, StringView& value) const {
        for (const auto* a = m_node->first_attribute(); a; a = a->next_attribute()) {
            if (std::string_view(a->name(), a->name_size()) == name) {
                value = StringView(a->value(), a->value_size());
                return true;
            }
        }
        return false;
    }

    /// Calls `visit(XMLAttribute)` for every attribute in document order.
    template <typename Visitor>
    void ForEachAttribute(Visitor&& visit) const {
        for (const auto* a = m_node->first_attribute(); a; a = a->next_attribute()) {
            visit(XMLAttribute{{a->name(), a->name_size()}, {a->value(), a->value_size()}});
        }
    }

private:
    const rapidxml::xml_node<char>* m_node;
};

} // namespace ozm
