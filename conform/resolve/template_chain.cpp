#include "resolve/template_chain.h"

#include "base/limits.h"

#include <algorithm>

namespace ozm::conform {
namespace {

bool IsGradient(Tag tag) { return tag == Tag::LinearGradient || tag == Tag::RadialGradient; }

} // namespace

TemplateChain::TemplateChain(const Document& document, const Node& node) {
    for (const Node* at = &node; at; at = document.FindById(at->LocalReference())) {
        if (m_nodes.size() >= kMaximumTemplates) break;
        const bool isKind = IsGradient(node.tag) ? IsGradient(at->tag) : at->tag == node.tag;
        if (!isKind || std::find(m_nodes.begin(), m_nodes.end(), at) != m_nodes.end()) break;
        m_nodes.push_back(at);
    }
}

const Attribute* TemplateChain::Find(Attr attr, bool isSameTag) const {
    for (const Node* const node : m_nodes) {
        if (isSameTag && node->tag != m_nodes.front()->tag) continue;
        if (const Attribute* const attribute = node->Find(attr)) return attribute;
    }
    return nullptr;
}

std::string_view TemplateChain::Get(Attr attr, std::string_view otherwise) const {
    const Attribute* const attribute = Find(attr);
    return attribute ? attribute->value : otherwise;
}

const Node* TemplateChain::FindWithChild(Tag tag) const {
    for (const Node* const node : m_nodes) {
        for (const Node* child = node->firstChild; child; child = child->nextSibling) {
            if (child->tag == tag) return node;
        }
    }
    return nullptr;
}

const Node* TemplateChain::FindWithContent() const {
    for (const Node* const node : m_nodes) {
        for (const Node* child = node->firstChild; child; child = child->nextSibling) {
            if (child->tag != Tag::Foreign && child->tag != Tag::Other && child->tag != Tag::Title)
                return node;
        }
    }
    return nullptr;
}

} // namespace ozm::conform
