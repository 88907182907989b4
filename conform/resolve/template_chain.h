#pragma once

#include "source/document.h"

#include <string_view>
#include <vector>

namespace ozm::conform {

/// An element and those that it refers to for what it lacks itself: gradients or patterns.
class TemplateChain {
public:
    TemplateChain(const Document& document, const Node& node);

    /// The first element of the chain that has the attribute, or null; with `isSameTag` only of those with
    /// the name of the first.
    const Attribute* Find(Attr attr, bool isSameTag = false) const;
    std::string_view Get(Attr attr, std::string_view otherwise = {}) const;
    /// The elements, the one that was asked for first.
    const std::vector<const Node*>& Nodes() const { return m_nodes; }
    /// The first element with a child of this tag, or null.
    const Node* FindWithChild(Tag tag) const;
    /// The first element with a child that is not foreign, or null.
    const Node* FindWithContent() const;

private:
    std::vector<const Node*> m_nodes;
};

} // namespace ozm::conform
