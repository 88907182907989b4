#include "style/selector.h"

#include "geometry/text.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>

namespace ozm::conform {
namespace {

using Kind = SimpleSelector::Kind;

/// Matching recurses once per compound; people write three.
constexpr size_t kMostCompounds = 64;

/// Selectors within selectors; people write one level.
constexpr int kDeepestList = 4;

bool ReadList(std::string_view text, int depth, bool isForgiving, std::vector<Selector>& list);

/// Takes what stands before the next comma outside of parentheses and brackets off a list.
std::string_view TakeItem(std::string_view& list) {
    int depth = 0;
    size_t length = 0;
    for (; length < list.size(); ++length) {
        const char c = list[length];
        if (c == '(' || c == '[') ++depth;
        if (c == ')' || c == ']') --depth;
        if (c == ',' && depth <= 0) break;
    }
    const std::string_view item = list.substr(0, length);
    list.remove_prefix(length);
    return Trim(item);
}

/// Reads the "odd", "3" or "2n+1" of a pseudo-class that counts.
bool ReadCount(std::string_view text, SimpleSelector& condition) {
    std::string plain;
    for (const char c : text) {
        if (!IsSpace(c)) plain += ToLower(c);
    }
    if (plain == "odd") plain = "2n+1";
    if (plain == "even") plain = "2n";
    const auto number = [](std::string_view digits, int otherwise, int& value) {
        const bool isNegative = digits.starts_with('-'), hasSign = isNegative || digits.starts_with('+');
        if (hasSign) digits.remove_prefix(1);
        if (hasSign && digits.empty() && otherwise == 0) return false;
        if (digits.size() > 6 || digits.find_first_not_of("0123456789") != std::string_view::npos)
            return false;
        value = digits.empty() ? otherwise : std::atoi(std::string(digits).c_str());
        if (isNegative) value = -value;
        return true;
    };
    const std::string_view whole = plain;
    const size_t n = whole.find('n');
    if (n == std::string_view::npos) return !whole.empty() && number(whole, 0, condition.start);
    return number(whole.substr(0, n), 1, condition.step) && number(whole.substr(n + 1), 0, condition.start);
}

bool IsNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

/// Reads a selector from front to back.
class SelectorReader {
public:
    SelectorReader(std::string_view text, int depth) : m_rest(Trim(text)), m_depth(depth) {}

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
        if (m_rest.starts_with("*|")) m_rest.remove_prefix(2);
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
        if (sign == ':' && m_rest.starts_with(':')) {
            // Pseudo-elements are never part of the tree.
            m_rest.remove_prefix(1);
            return !ReadName().empty() && Add(compound, {Kind::Never, {}, {}}, 1);
        }
        const std::string_view name = ReadName();
        if (name.empty()) return false;
        switch (sign) {
        case '.': return Add(compound, {Kind::Class, name, {}}, 0x100);
        case '#': return Add(compound, {Kind::Id, name, {}}, 0x10000);
        case ':': return ReadPseudoClass(name, compound);
        default: return false;
        }
    }

    /// What stands in the parentheses that follow; none where they do not.
    std::optional<std::string_view> ReadParentheses() {
        if (!m_rest.starts_with('(')) return {};
        int depth = 0;
        for (size_t at = 0; at < m_rest.size(); ++at) {
            if (m_rest[at] == '(') ++depth;
            if (m_rest[at] != ')' || --depth > 0) continue;
            const std::string_view inner = m_rest.substr(1, at - 1);
            m_rest.remove_prefix(at + 1);
            return inner;
        }
        return {};
    }

    bool ReadPseudoClass(std::string_view name, CompoundSelector& compound) {
        constexpr struct {
            std::string_view name;
            Kind kind, second;
        } kPlain[] = {{"first-child", Kind::NthChild, Kind::NthChild},
                      {"last-child", Kind::NthLastChild, Kind::NthLastChild},
                      {"only-child", Kind::NthChild, Kind::NthLastChild},
                      {"first-of-type", Kind::NthOfType, Kind::NthOfType},
                      {"last-of-type", Kind::NthLastOfType, Kind::NthLastOfType},
                      {"only-of-type", Kind::NthOfType, Kind::NthLastOfType},
                      {"root", Kind::Root, Kind::Root},
                      {"hover", Kind::Never, Kind::Never},
                      {"active", Kind::Never, Kind::Never},
                      {"focus", Kind::Never, Kind::Never},
                      {"focus-visible", Kind::Never, Kind::Never},
                      {"focus-within", Kind::Never, Kind::Never},
                      {"target", Kind::Never, Kind::Never},
                      {"visited", Kind::Never, Kind::Never}};
        for (const auto& plain : kPlain) {
            if (!EqualsIgnoringCase(name, plain.name)) continue;
            if (plain.kind != plain.second) Add(compound, {plain.second, {}, {}}, 0);
            return Add(compound, {plain.kind, {}, {}}, 0x100);
        }
        const std::optional<std::string_view> inner = ReadParentheses();
        if (!inner) return false;
        constexpr std::pair<std::string_view, Kind> kCounting[] = {{"nth-child", Kind::NthChild},
                                                                   {"nth-last-child", Kind::NthLastChild},
                                                                   {"nth-of-type", Kind::NthOfType},
                                                                   {"nth-last-of-type", Kind::NthLastOfType}};
        for (const auto& [counting, kind] : kCounting) {
            if (!EqualsIgnoringCase(name, counting)) continue;
            SimpleSelector condition{kind, {}, {}};
            return ReadCount(*inner, condition) && Add(compound, std::move(condition), 0x100);
        }
        return ReadLogical(name, *inner, compound);
    }

    bool ReadLogical(std::string_view name, std::string_view inner, CompoundSelector& compound) {
        const bool isNot = EqualsIgnoringCase(name, "not"), isWhere = EqualsIgnoringCase(name, "where");
        if (!isNot && !isWhere && !EqualsIgnoringCase(name, "is")) return false;
        SimpleSelector condition{isNot ? Kind::NoneOf : Kind::AnyOf, {}, {}};
        std::vector<Selector> list;
        if (!ReadList(inner, m_depth + 1, !isNot, list)) return false;
        uint32_t specificity = 0;
        for (const Selector& selector : list) specificity = std::max(specificity, selector.specificity);
        condition.list = std::make_shared<const std::vector<Selector>>(std::move(list));
        return Add(compound, std::move(condition), isWhere ? 0 : specificity);
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
        compound.conditions.push_back(std::move(condition));
        m_selector.specificity += specificity;
        return true;
    }

    std::string_view m_rest;
    const int m_depth;
    Selector m_selector;
};

/// Reads the items of a list; with `isForgiving` those that are not known count as if they were not there.
bool ReadList(std::string_view text, int depth, bool isForgiving, std::vector<Selector>& list) {
    if (depth > kDeepestList) return false;
    while (true) {
        std::optional<Selector> selector = SelectorReader(TakeItem(text), depth).Read();
        if (!selector && !isForgiving) return false;
        if (selector) list.push_back(std::move(*selector));
        if (text.empty()) return true;
        text.remove_prefix(1);
    }
}

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

/// The place of an element among its siblings, or among those of its name, from either end; from 1.
int PlaceOf(const Node& node, Node* Node::*next, bool isOfType, uint64_t& budget) {
    int place = 1;
    for (const Node* at = node.*next; at && budget > 0; at = at->*next) {
        --budget;
        if (!isOfType || at->localName == node.localName) ++place;
    }
    return place;
}

bool MatchesPlace(const SimpleSelector& condition, const Node& node, uint64_t& budget) {
    if (!node.parent && condition.kind != Kind::NthOfType && condition.kind != Kind::NthLastOfType)
        return false;
    const bool isFromStart = condition.kind == Kind::NthChild || condition.kind == Kind::NthOfType;
    const bool isOfType = condition.kind == Kind::NthOfType || condition.kind == Kind::NthLastOfType;
    const int place =
        PlaceOf(node, isFromStart ? &Node::previousSibling : &Node::nextSibling, isOfType, budget);
    if (budget == 0) return false; // not all siblings were counted
    const int distance = place - condition.start;
    if (condition.step == 0) return distance == 0;
    return distance % condition.step == 0 && distance / condition.step >= 0;
}

bool MatchesCondition(const SimpleSelector& condition, const Node& node, uint64_t& budget) {
    const auto matches = [&](const Selector& selector) { return Matches(selector, node, budget); };
    switch (condition.kind) {
    case Kind::Type: return node.localName == condition.name;
    case Kind::Class: return HasWord(node.Get(Attr::Class), condition.name);
    case Kind::Id: return node.Get(Attr::Id) == condition.name;
    case Kind::NthChild:
    case Kind::NthLastChild:
    case Kind::NthOfType:
    case Kind::NthLastOfType: return MatchesPlace(condition, node, budget);
    case Kind::Root: return !node.parent;
    case Kind::AnyOf: return std::any_of(condition.list->begin(), condition.list->end(), matches);
    case Kind::NoneOf:
        return std::none_of(condition.list->begin(), condition.list->end(), matches) && budget > 0;
    case Kind::Never: return false;
    default: {
        const Attribute* const attribute = FindByName(node, condition.name);
        return attribute && MatchesValue(condition.kind, attribute->value, condition.value);
    }
    }
}

bool MatchesCompound(const CompoundSelector& compound, const Node& node, uint64_t& budget) {
    return std::all_of(
        compound.conditions.begin(), compound.conditions.end(),
        [&](const SimpleSelector& condition) { return MatchesCondition(condition, node, budget); });
}

/// Tries the compounds of a selector from back to front.
class Matcher {
public:
    Matcher(const Selector& selector, uint64_t& budget) : m_selector(selector), m_budget(budget) {}

    /// True when the compounds up to `index` match with the node as their last.
    bool MatchesUpTo(size_t index, const Node& node) {
        if (m_budget == 0) return false;
        --m_budget;
        if (!MatchesCompound(m_selector.compounds[index], node, m_budget)) return false;
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

bool ReadSelectorList(std::string_view text, std::vector<Selector>& list) {
    return ReadList(text, 0, false, list);
}

bool Matches(const Selector& selector, const Node& node, uint64_t& budget) {
    return Matcher(selector, budget).MatchesUpTo(selector.compounds.size() - 1, node);
}

} // namespace ozm::conform
