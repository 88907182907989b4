#include "style/style_sheets.h"

#include "base/limits.h"
#include "geometry/text.h"
#include "style/custom_properties.h"
#include "style/media_query.h"

#include <algorithm>
#include <memory>

namespace ozm::conform {
namespace {

/// Rules nested deeper than people write them are left out, as reading them recurses.
constexpr int kDeepestAtRule = 8;

/// The byte after the comment at the start of the text, or 0 without one.
size_t CommentLength(std::string_view text) {
    if (text.starts_with("<!--")) return 4;
    if (text.starts_with("-->")) return 3;
    if (!text.starts_with("/*")) return 0;
    const size_t end = text.find("*/", 2);
    return end == std::string_view::npos ? text.size() : end + 2;
}

/// The byte of the first character among `wanted` outside comments, or the size.
size_t FindOutsideComments(std::string_view text, size_t at, std::string_view wanted) {
    while (at < text.size() && wanted.find(text[at]) == std::string_view::npos) {
        at += std::max<size_t>(1, CommentLength(text.substr(at)));
    }
    return std::min(at, text.size());
}

/// The byte of the brace that closes the one before `at`, or the size.
size_t FindClosingBrace(std::string_view text, size_t at) {
    for (int depth = 1; at < text.size(); ++at) {
        at = FindOutsideComments(text, at, "{}");
        if (at < text.size() && (depth += text[at] == '{' ? 1 : -1) == 0) break;
    }
    return std::min(at, text.size());
}

/// True for the head of an at-rule whose rules a screen follows.
bool Applies(std::string_view head) {
    if (StartsWithIgnoringCase(head, "@media")) return MeetsMediaQuery(head.substr(6));
    if (!StartsWithIgnoringCase(head, "@supports")) return false;
    return !StartsWithIgnoringCase(Trim(head.substr(9)), "not");
}

/// Orders declarations for one element: important ones, then by origin, specificity and place.
uint64_t PrecedenceOf(Origin origin, bool isImportant, uint64_t specificityAndOrder) {
    return uint64_t{isImportant} << 62 | static_cast<uint64_t>(origin) << 60 | specificityAndOrder;
}

} // namespace

StyleSheets::StyleSheets(const Document& document)
    : m_byNode(document.NodeCount()), m_selectorTests(kMaximumSelectorTests),
      m_variableWork(kMaximumVariableWork) {
    for (const Node* const sheet : document.StyleSheets()) {
        const std::string_view type = sheet->Get(Attr::Type);
        if (!type.empty() && !EqualsIgnoringCase(type, "text/css")) continue;
        if (MeetsMediaQuery(sheet->Get(Attr::Media))) ReadSheet(sheet->text, sheet->textOffset, {});
    }
}

void StyleSheets::ReadSheet(std::string_view text, uint32_t offset, Nesting nesting) {
    for (size_t at = 0; at < text.size();) {
        const size_t comment = CommentLength(text.substr(at));
        if (comment > 0 || IsSpace(text[at])) {
            at += std::max<size_t>(1, comment);
        } else if (text[at] == '@') {
            at = ReadAtRule(text, at, offset, nesting);
        } else {
            const size_t open = FindOutsideComments(text, at, "{");
            if (open == text.size()) return;
            const size_t close = FindClosingBrace(text, open + 1);
            ReadRule(text.substr(at, open - at), text.substr(open + 1, close - open - 1),
                     offset + static_cast<uint32_t>(open + 1), nesting.isInLayer);
            at = close + 1;
        }
    }
}

size_t StyleSheets::ReadAtRule(std::string_view text, size_t at, uint32_t offset, Nesting nesting) {
    const size_t end = FindOutsideComments(text, at, ";{");
    if (end == text.size() || text[end] == ';') return end + 1;
    const size_t close = FindClosingBrace(text, end + 1);
    const std::string_view head = WithoutComments(text.substr(at, end - at), m_memory);
    const bool isLayer = StartsWithIgnoringCase(head, "@layer");
    if (nesting.depth < kDeepestAtRule && (isLayer || Applies(head))) {
        ReadSheet(text.substr(end + 1, close - end - 1), offset + static_cast<uint32_t>(end + 1),
                  {nesting.depth + 1, nesting.isInLayer || isLayer});
    }
    return close + 1;
}

void StyleSheets::ReadRule(std::string_view selectors, std::string_view body, uint32_t offset,
                           bool isInLayer) {
    std::vector<Selector> list;
    if (!ReadSelectorList(WithoutComments(selectors, m_memory), list)) return;
    const size_t first = m_declarations.size();
    ReadDeclarations(body, m_memory, m_declarations);
    for (size_t i = first; i < m_declarations.size(); ++i) {
        m_declarations[i].offset += offset;
        m_declarations[i].origin = Origin::StyleSheet;
    }
    for (Selector& selector : list) {
        if (m_rules.size() >= kMaximumSelectors) return;
        const uint64_t precedence = uint64_t{!isInLayer} << 48 |
                                    uint64_t{std::min(selector.specificity, 0xFFFFFFu)} << 24 |
                                    m_rules.size();
        m_rules.push_back({std::move(selector), first, m_declarations.size() - first, precedence});
    }
}

std::span<const Declaration> StyleSheets::Of(const Node& node) {
    std::span<const Declaration>& kept = m_byNode[node.index];
    if (!kept.data()) {
        Collect(node);
        // One more, so that an empty list differs from one that nobody asked for.
        Declaration* const copy = static_cast<Declaration*>(
            m_memory.allocate((m_collected.size() + 1) * sizeof(Declaration), alignof(Declaration)));
        std::uninitialized_copy(m_collected.begin(), m_collected.end(), copy);
        kept = {copy, m_collected.size()};
    }
    return kept;
}

void StyleSheets::Collect(const Node& node) {
    std::vector<Declaration>& declarations = m_collected;
    declarations.clear();
    const Attribute* style = nullptr;
    for (const Attribute& attribute : node.attributes) {
        if (attribute.attr == Attr::Style) style = &attribute;
        if (!IsPresentation(attribute.attr)) continue;
        Declaration& declaration = declarations.emplace_back();
        declaration.property = attribute.attr;
        declaration.value = WithoutComments(attribute.value, m_memory);
        declaration.hasVariable = HasVariable(declaration.value);
        declaration.offset = attribute.offset;
    }
    for (const Rule& rule : m_rules) {
        if (!Matches(rule.selector, node, m_selectorTests)) continue;
        for (size_t i = rule.first; i < rule.first + rule.count; ++i) {
            declarations.push_back(m_declarations[i]);
            declarations.back().precedence = rule.precedence;
        }
    }
    if (style) {
        const size_t first = declarations.size();
        ReadDeclarations(style->value, m_memory, declarations);
        for (size_t i = first; i < declarations.size(); ++i) {
            declarations[i].origin = Origin::StyleAttribute;
            declarations[i].offset += style->valueOffset;
        }
    }
    const auto key = [](const Declaration& declaration) {
        return PrecedenceOf(declaration.origin, declaration.isImportant, declaration.precedence);
    };
    for (Declaration& declaration : declarations) declaration.owner = &node;
    if (m_rules.empty() && !style) return;
    std::stable_sort(declarations.begin(), declarations.end(),
                     [&](const Declaration& a, const Declaration& b) { return key(a) < key(b); });
}

} // namespace ozm::conform
