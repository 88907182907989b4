#include "ozmNestingDepth.h"

#include <cstddef>
#include <cstring>
#include <string_view>

namespace ozm {
namespace {

// The reader's own classes of characters.

bool IsXMLSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

bool IsNodeNameCharacter(char c) { return c != '\0' && !IsXMLSpace(c) && c != '/' && c != '>' && c != '?'; }

bool IsAttributeNameCharacter(char c) { return IsNodeNameCharacter(c) && c != '!' && c != '<' && c != '='; }

/// Walks XML text token by token, without recursion, in step with the reader. Each step returns false where
/// the reader would give up.
class NestingScanner {
public:
    NestingScanner(const char* text, uint32_t limit) : m_at(text), m_limit(limit) {}

    bool ExceedsLimit() {
        if (StartsWith("\xEF\xBB\xBF")) m_at += 3;
        while (Step()) {
        }
        return m_depth > m_limit;
    }

private:
    bool StartsWith(std::string_view token) const {
        return std::strncmp(m_at, token.data(), token.size()) == 0;
    }

    /// Goes behind the next occurrence of `token`.
    bool SkipPast(const char* token) {
        const char* const found = std::strstr(m_at, token);
        if (found) m_at = found + std::strlen(token);
        return found;
    }

    template <typename Predicate>
    void SkipWhile(Predicate predicate) {
        while (predicate(*m_at)) ++m_at;
    }

    bool Step() {
        if (m_depth > 0) {
            m_at += std::strcspn(m_at, "<");
        } else {
            SkipWhile(IsXMLSpace);
        }
        if (*m_at != '<') return false;
        ++m_at;
        switch (*m_at) {
        case '?': return SkipPast("?>");
        case '!': return SkipMarkup();
        case '/': return m_depth > 0 && SkipClosingTag();
        default: return SkipOpeningTag();
        }
    }

    bool SkipMarkup() {
        if (StartsWith("!--")) {
            m_at += 3;
            return SkipPast("-->");
        }
        if (StartsWith("![CDATA[")) return SkipPast("]]>");
        if (StartsWith("!DOCTYPE") && IsXMLSpace(m_at[8])) return SkipDoctype();
        return SkipPast(">");
    }

    bool SkipDoctype() {
        for (uint64_t brackets = 0;; ++m_at) {
            m_at += std::strcspn(m_at, brackets > 0 ? "[]" : "[>");
            switch (*m_at) {
            case '\0': return false;
            case '[': ++brackets; break;
            case ']': --brackets; break;
            case '>': ++m_at; return true;
            default: break;
            }
        }
    }

    bool SkipClosingTag() {
        ++m_at;
        SkipWhile(IsNodeNameCharacter);
        SkipWhile(IsXMLSpace);
        if (*m_at != '>') return false;
        ++m_at;
        --m_depth;
        return true;
    }

    bool SkipOpeningTag() {
        if (!IsNodeNameCharacter(*m_at)) return false;
        if (++m_depth > m_limit) return false;
        SkipWhile(IsNodeNameCharacter);
        SkipWhile(IsXMLSpace);
        while (IsAttributeNameCharacter(*m_at)) {
            if (!SkipAttribute()) return false;
        }
        if (*m_at == '/') {
            ++m_at;
            --m_depth;
        }
        if (*m_at != '>') return false;
        ++m_at;
        return true;
    }

    bool SkipAttribute() {
        SkipWhile(IsAttributeNameCharacter);
        SkipWhile(IsXMLSpace);
        if (*m_at != '=') return false;
        ++m_at;
        SkipWhile(IsXMLSpace);
        if (*m_at != '"' && *m_at != '\'') return false;
        const char quote[] = {*m_at, '\0'};
        ++m_at;
        if (!SkipPast(quote)) return false;
        SkipWhile(IsXMLSpace);
        return true;
    }

    const char* m_at;
    const uint32_t m_limit;
    uint32_t m_depth = 0;
};

} // namespace

bool NestsDeeperThan(const char* text, uint32_t limit) {
    // The shortest opening tag, "<a>", has three characters: most files are too short to nest too deep.
    const size_t shortest = size_t{3} * limit;
    const size_t length = strnlen(text, shortest);
    if (length < shortest) return false;
    const char* const end = text + length + std::strlen(text + length);
    const char* at = text;
    for (uint32_t tags = 0; tags <= limit; ++tags) {
        at = static_cast<const char*>(std::memchr(at, '<', static_cast<size_t>(end - at)));
        if (!at) return false;
        ++at;
    }
    return NestingScanner(text, limit).ExceedsLimit();
}

} // namespace ozm
