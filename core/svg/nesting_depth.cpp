#include <Ozmira/ozmLimits.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace ozm {
namespace {

// The character classes of the XML reader.

bool IsXMLSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

bool IsNodeNameCharacter(char c) { return c != '\0' && !IsXMLSpace(c) && c != '/' && c != '>' && c != '?'; }

bool IsAttributeNameCharacter(char c) { return IsNodeNameCharacter(c) && c != '!' && c != '<' && c != '='; }

/// Scans XML text token by token, without recursion, and accepts the same syntax as the XML reader. The
/// functions that return a bool return false where the reader would stop.
class NestingScanner {
public:
    NestingScanner(std::string_view text, uint32_t limit) : m_rest(text), m_limit(limit) {}

    bool ExceedsLimit() {
        if (m_rest.starts_with("\xEF\xBB\xBF")) Skip(3);
        while (Step()) {
        }
        return m_depth > m_limit;
    }

private:
    /// The next character, or NUL at the end.
    char Next() const { return m_rest.empty() ? '\0' : m_rest.front(); }

    void Skip(size_t count) { m_rest.remove_prefix(count); }

    template <typename Predicate>
    void SkipWhile(Predicate predicate) {
        while (predicate(Next())) Skip(1);
    }

    /// Moves past the next occurrence of `token`.
    bool SkipPast(std::string_view token) {
        const size_t found = m_rest.find(token);
        if (found == std::string_view::npos) return false;
        Skip(found + token.size());
        return true;
    }

    bool SkipToTag() {
        if (m_depth > 0) {
            Skip(std::min(m_rest.find('<'), m_rest.size()));
        } else {
            SkipWhile(IsXMLSpace);
        }
        return Next() == '<';
    }

    bool Step() {
        if (!SkipToTag()) return false;
        Skip(1);
        switch (Next()) {
        case '?':
            Skip(1); // The "?" of "<?>" does not also belong to a closing "?>".
            return SkipPast("?>");
        case '!': return SkipMarkup();
        case '/': return m_depth > 0 && SkipClosingTag();
        default: return SkipOpeningTag();
        }
    }

    bool SkipMarkup() {
        constexpr std::string_view kComment = "!--", kDoctype = "!DOCTYPE";
        if (m_rest.starts_with(kComment)) {
            Skip(kComment.size());
            return SkipPast("-->");
        }
        if (m_rest.starts_with("![CDATA[")) return SkipPast("]]>");
        if (m_rest.starts_with(kDoctype)) {
            Skip(kDoctype.size());
            if (IsXMLSpace(Next())) return SkipDoctype();
        }
        return SkipPast(">");
    }

    bool SkipDoctype() {
        for (uint64_t brackets = 0; !m_rest.empty(); Skip(1)) {
            switch (Next()) {
            case '[': ++brackets; break;
            case ']': brackets -= brackets > 0; break;
            case '>':
                if (brackets > 0) break;
                Skip(1);
                return true;
            default: break;
            }
        }
        return false;
    }

    bool SkipClosingTag() {
        Skip(1);
        SkipWhile(IsNodeNameCharacter);
        SkipWhile(IsXMLSpace);
        if (Next() != '>') return false;
        Skip(1);
        --m_depth;
        return true;
    }

    bool SkipOpeningTag() {
        if (!IsNodeNameCharacter(Next())) return false;
        if (++m_depth > m_limit) return false;
        SkipWhile(IsNodeNameCharacter);
        SkipWhile(IsXMLSpace);
        while (IsAttributeNameCharacter(Next())) {
            if (!SkipAttribute()) return false;
        }
        if (Next() == '/') {
            Skip(1);
            --m_depth;
        }
        if (Next() != '>') return false;
        Skip(1);
        return true;
    }

    bool SkipAttribute() {
        SkipWhile(IsAttributeNameCharacter);
        SkipWhile(IsXMLSpace);
        if (Next() != '=') return false;
        Skip(1);
        SkipWhile(IsXMLSpace);
        const char quote = Next();
        if (quote != '"' && quote != '\'') return false;
        Skip(1);
        if (!SkipPast({&quote, 1})) return false;
        SkipWhile(IsXMLSpace);
        return true;
    }

    std::string_view m_rest;
    const uint32_t m_limit;
    uint32_t m_depth = 0;
};

} // namespace

bool NestsDeeperThan(const char* text, uint32_t limit) {
    // The shortest opening tag, "<a>", has three characters, so most files are too short to nest too deep.
    const size_t minLength = size_t{3} * limit;
    const size_t length = strnlen(text, minLength);
    if (length < minLength) return false;
    const std::string_view whole(text, length + std::strlen(text + length));
    // Most of the others have too few tags.
    size_t at = 0;
    for (uint32_t tags = 0; tags <= limit; ++tags) {
        at = whole.find('<', at);
        if (at == std::string_view::npos) return false;
        ++at;
    }
    return NestingScanner(whole, limit).ExceedsLimit();
}

} // namespace ozm
