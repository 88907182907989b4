#pragma once

#include <Ozmira/ozmStringUtils.h>

#include <rapidxml/rapidxml.hpp>

namespace ozm {

/// One attribute of an element node. An attribute without a value has the empty view.
struct XMLAttribute {
    StringView name;
    StringView value;
};

/// A view of one element node; valid while the XML document and its text live. May be null, see `operator
/// bool`. With the flags that the parser uses every node of the tree is an element.
class XMLNode {
public:
    explicit XMLNode(const rapidxml::xml_node<char>* node) : m_node(node) {}

    /// False past the last sibling and for the child of a childless node; nothing else may be asked of such
    /// a node.
    explicit operator bool() const { return m_node != nullptr; }

    StringView Name() const { return {m_node->name(), m_node->name_size()}; }
    XMLNode FirstChild() const { return XMLNode(m_node->first_node()); }
    /// Not to be asked of the top node of a tree.
    XMLNode NextSibling() const { return XMLNode(m_node->next_sibling()); }

    /// Finds the first attribute with exactly this name and stores its value. False leaves `value` as it was.
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
