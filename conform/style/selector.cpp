#include "style/selector.h"

#include "geometry/text.h"

#include <algorithm>

namespace ozm::conform {
namespace {

using Kind = SimpleSelector::Kind;

/// Matching recurses once per compound; people write three.
constexpr size_t kMostCompounds = 64;

bool IsNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

/// Reads a selector from front to back.
class SelectorReader {
public:
    explicit SelectorReader(std::string_view text) : m_rest(Trim(text)) {}

    std::optional<Selector> Read() {
        Combinator combinator = Combinator::Descendant;
        while (!m_rest.empty() && m_selector.compounds.size() < kMostCompounds) {
            CompoundSelector compound;
            compound.combinator = combinator;
            if (!ReadCompound(compound)) return {};
            m_selector.compounds.push_back(std::move(compound));
            if (m_rest.empty()) break;
            combinator = ReadCombinator();
            if (m_rest.empty()) return {};
        }
        if (m_selector.compounds.empty() || !m_rest.empty()) return {};
        return std::move(m_selector);
    }

private:
    std::string_view ReadName() {
        size_t length = 0;
        while (length < m_rest.size() && IsNameCharacter(m_rest[length])) ++length;
        const std::string_view name = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        return name;
    }

    Combinator ReadCombinator() {
        m_rest = Trim(m_rest);
        const char sign = m_rest.front();
        if (sign != '>' && sign != '+' && sign != '~') return Combinator::Descendant;
        m_rest = Trim(m_rest.substr(1));
        return sign == '>'   ? Combinator::Child
               : sign == '+' ? Combinator::NextSibling
                             : Combinator::LaterSibling;
    }

    bool ReadCompound(CompoundSelector& compound) {
        bool hasAny = false;
        if (m_rest.starts_with('*')) {
            m_rest.remove_prefix(1);
            hasAny = true;
        } else if (const std::string_view type = ReadName(); !type.empty()) {
            compound.conditions.push_back({Kind::Type, type, {}});
            m_selector.specificity += 1;
            hasAny = true;
        }
        while (!m_rest.empty() && !IsSpace(m_rest.front())) {
            const char sign = m_rest.front();
            if (sign == '>' || sign == '+' || sign == '~') break;
            m_rest.remove_prefix(1);
            if (!ReadCondition(sign, compound)) return false;
            hasAny = true;
        }
        return hasAny;
    }

    bool ReadCondition(char sign, CompoundSelector& compound) {
        if (sign == '[') return ReadAttribute(compound);
        const std::string_view name = ReadName();
        if (name.empty()) return false;
        switch (sign) {
        case '.': return Add(compound, {Kind::Class, name, {}}, 0x100);
        case '#': return Add(compound, {Kind::Id, name, {}}, 0x10000);
        case ':':
            if (name == "first-child") return Add(compound, {Kind::FirstChild, {}, {}}, 0x100);
            if (name == "last-child") return Add(compound, {Kind::LastChild, {}, {}}, 0x100);
            if (name == "only-child") return Add(compound, {Kind::OnlyChild, {}, {}}, 0x100);
            if (name == "root") return Add(compound, {Kind::Root, {}, {}}, 0x100);
            return false;
        default: return false;
        }
    }

    bool ReadAttribute(CompoundSelector& compound) {
        const size_t end = m_rest.find(']');
        if (end == std::string_view::npos) return false;
        std::string_view text = Trim(m_rest.substr(0, end));
        m_rest.remove_prefix(end + 1);
        const size_t equals = text.find('=');
        if (equals == std::string_view::npos) {
            return Add(compound, {Kind::HasAttribute, text, {}}, 0x100);
        }
        if (equals == 0) return false;
        std::string_view value = Trim(text.substr(equals + 1));
        if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'')) {
            value = value.substr(1, value.size() - 2);
        }
        Kind kind = Kind::AttributeIs;
        std::string_view name = text.substr(0, equals);
        switch (name.back()) {
        case '~': kind = Kind::AttributeHasWord; break;
        case '^': kind = Kind::AttributeHasPrefix; break;
        case '$': kind = Kind::AttributeHasSuffix; break;
        case '*': kind = Kind::AttributeContains; break;
        case '|': kind = Kind::AttributeHasDash; break;
        default: break;
        }
        if (kind != Kind::AttributeIs) name.remove_suffix(1);
        return Add(compound, {kind, Trim(name), value}, 0x100);
    }

    bool Add(CompoundSelector& compound, SimpleSelector condition, uint32_t specificity) {
        compound.conditions.push_back(condition);
        m_selector.specificity += specificity;
        return true;
    }

    std::string_view m_rest;
    Selector m_selector;
};

const Attribute* FindByName(const Node& node, std::string_view name) {
    for (const Attribute& attribute : node.attributes) {
        if (attribute.name == name) return &attribute;
    }
    return nullptr;
}

bool HasWord(std::string_view list, std::string_view word) {
    while (!list.empty()) {
        while (!list.empty() && IsSpace(list.front())) list.remove_prefix(1);
        size_t length = 0;
        while (length < list.size() && !IsSpace(list[length])) ++length;
        if (length > 0 && list.substr(0, length) == word) return true;
        list.remove_prefix(length);
    }
    return false;
}

bool MatchesValue(Kind kind, std::string_view value, std::string_view wanted) {
    switch (kind) {
    case Kind::AttributeIs: return value == wanted;
    case Kind::AttributeHasWord: return HasWord(value, wanted);
    case Kind::AttributeHasPrefix: return !wanted.empty() && value.starts_with(wanted);
    case Kind::AttributeHasSuffix: return !wanted.empty() && value.ends_with(wanted);
    case Kind::AttributeContains: return !wanted.empty() && value.find(wanted) != std::string_view::npos;
    case Kind::AttributeHasDash:
        return value == wanted || (value.starts_with(wanted) && value.substr(wanted.size()).starts_with('-'));
    default: return true;
    }
}

bool MatchesCondition(const SimpleSelector& condition, const Node& node) {
    switch (condition.kind) {
    case Kind::Type: return node.localName == condition.name;
    case Kind::Class: return HasWord(node.Get(Attr::Class), condition.name);
    case Kind::Id: return node.Get(Attr::Id) == condition.name;
    case Kind::FirstChild: return node.parent && !node.previousSibling;
    case Kind::LastChild: return node.parent && !node.nextSibling;
    case Kind::OnlyChild: return node.parent && !node.previousSibling && !node.nextSibling;
    case Kind::Root: return !node.parent;
    default: {
        const Attribute* const attribute = FindByName(node, condition.name);
        return attribute && MatchesValue(condition.kind, attribute->value, condition.value);
    }
    }
}

bool MatchesCompound(const CompoundSelector& compound, const Node& node) {
    return std::all_of(compound.conditions.begin(), compound.conditions.end(),
                       [&](const SimpleSelector& condition) { return MatchesCondition(condition, node); });
}

/// Tries the compounds of a selector from back to front.
class Matcher {
public:
    Matcher(const Selector& selector, uint64_t& budget) : m_selector(selector), m_budget(budget) {}

    /// True when the compounds up to `index` match with the node as their last.
    bool MatchesUpTo(size_t index, const Node& node) {
        if (m_budget == 0) return false;
        --m_budget;
        if (!MatchesCompound(m_selector.compounds[index], node)) return false;
        if (index == 0) return true;
        switch (m_selector.compounds[index].combinator) {
        case Combinator::Child: return node.parent && MatchesUpTo(index - 1, *node.parent);
        case Combinator::NextSibling:
            return node.previousSibling && MatchesUpTo(index - 1, *node.previousSibling);
        case Combinator::Descendant: return MatchesAny(index - 1, node, &Node::parent);
        case Combinator::LaterSibling: return MatchesAny(index - 1, node, &Node::previousSibling);
        }
        return false;
    }

private:
    bool MatchesAny(size_t index, const Node& node, Node* Node::*next) {
        for (const Node* at = node.*next; at; at = at->*next) {
            if (MatchesUpTo(index, *at)) return true;
        }
        return false;
    }

    const Selector& m_selector;
    uint64_t& m_budget;
};

} // namespace

std::optional<Selector> ReadSelector(std::string_view text) { return SelectorReader(text).Read(); }

bool Matches(const Selector& selector, const Node& node, uint64_t& budget) {
    return Matcher(selector, budget).MatchesUpTo(selector.compounds.size() - 1, node);
}

} // namespace ozm::conform
