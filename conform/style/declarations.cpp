#include "style/declarations.h"

#include "geometry/text.h"
#include "style/custom_properties.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace ozm::conform {
namespace {

/// The byte after the comment, string, escape or character at `at`.
size_t SkipToken(std::string_view text, size_t at) {
    if (text.substr(at, 2) == "/*") {
        const size_t end = text.find("*/", at + 2);
        return end == std::string_view::npos ? text.size() : end + 2;
    }
    if (text[at] == '"' || text[at] == '\'') {
        size_t end = at + 1;
        while (end < text.size() && text[end] != text[at]) end += text[end] == '\\' ? 2 : 1;
        return std::min(end + 1, text.size());
    }
    return at + 1;
}

/// The byte of the semicolon that ends the declaration at `at`, or the end of the text.
size_t FindEnd(std::string_view text, size_t at) {
    int depth = 0;
    while (at < text.size()) {
        const char c = text[at];
        if (c == '(') ++depth;
        if (c == ')') --depth;
        if (c == ';' && depth <= 0) break;
        at = SkipToken(text, at);
    }
    return at;
}

/// Takes "!important" off a value.
bool TakeImportant(std::string_view& value) {
    const size_t mark = value.rfind('!');
    if (mark == std::string_view::npos || !EqualsIgnoringCase(Trim(value.substr(mark + 1)), "important")) {
        return false;
    }
    value = Trim(value.substr(0, mark));
    return true;
}

Attr PropertyOf(std::string_view name) {
    if (name.starts_with("--")) return Attr::Custom;
    Attr attr = AttrOf(name);
    if (attr == Attr::Other && name.size() < 24) {
        char lower[24];
        std::transform(name.begin(), name.end(), lower, ToLower);
        attr = AttrOf({lower, name.size()});
    }
    return IsProperty(attr) ? attr : Attr::Other;
}

} // namespace

std::string_view WithoutComments(std::string_view text, std::pmr::memory_resource& memory) {
    if (text.find("/*") == std::string_view::npos) return Trim(text);
    std::string kept;
    for (size_t at = 0; at < text.size();) {
        const size_t end = SkipToken(text, at);
        // A comment keeps what stands around it apart.
        kept += text.substr(at, 2) == "/*" ? " " : text.substr(at, end - at);
        at = end;
    }
    const std::string_view trimmed = Trim(kept);
    if (trimmed.empty()) return {};
    char* const copy = static_cast<char*>(memory.allocate(trimmed.size(), 1));
    std::memcpy(copy, trimmed.data(), trimmed.size());
    return {copy, trimmed.size()};
}

void ReadDeclarations(std::string_view text, std::pmr::memory_resource& memory,
                      std::vector<Declaration>& declarations) {
    for (size_t start = 0; start < text.size();) {
        const size_t end = FindEnd(text, start);
        std::string_view item = text.substr(start, end - start);
        size_t first = start;
        while (!item.empty() && (IsSpace(item.front()) || item.starts_with("/*"))) {
            const size_t skipped = SkipToken(item, 0);
            item.remove_prefix(skipped);
            first += skipped;
        }
        start = end + 1;
        const size_t colon = item.find(':');
        if (colon == std::string_view::npos) continue;
        Declaration declaration;
        const std::string_view name = WithoutComments(item.substr(0, colon), memory);
        declaration.property = PropertyOf(name);
        if (declaration.property == Attr::Other) continue;
        if (declaration.property == Attr::Custom) declaration.name = name;
        declaration.value = WithoutComments(item.substr(colon + 1), memory);
        declaration.hasVariable = HasVariable(declaration.value);
        declaration.isImportant = TakeImportant(declaration.value);
        declaration.offset = static_cast<uint32_t>(first);
        if (!declaration.value.empty()) declarations.push_back(declaration);
    }
}

} // namespace ozm::conform
