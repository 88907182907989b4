#include "catalogue/contents_json.h"

#include "base/text.h"

#include <algorithm>
#include <vector>

namespace ozm::tool {
namespace {

using Members = std::vector<std::pair<std::string_view, std::string>>; // names and values in JSON

/// Joins the items of an object or an array, each on lines of its own.
std::string Enclose(char open, std::span<const std::string> items, char close, size_t depth) {
    const std::string indent(2 * depth, ' ');
    std::string text(1, open);
    for (size_t i = 0; i < items.size(); ++i) text += (i == 0 ? "\n" : ",\n") + indent + "  " + items[i];
    return text + "\n" + indent + close;
}

std::string Object(const Members& members, size_t depth) {
    std::vector<std::string> items;
    for (const auto& [name, value] : members) items.push_back(QuoteJSON(name) + " : " + value);
    return Enclose('{', items, '}', depth);
}

std::string ImageObject(const ImageEntry& image) {
    constexpr size_t kDepth = 2;
    Members members;
    if (image.isDark) {
        const std::string dark =
            Object({{"appearance", "\"luminosity\""}, {"value", "\"dark\""}}, kDepth + 2);
        members.emplace_back("appearances", Enclose('[', {&dark, 1}, ']', kDepth + 1));
    }
    members.emplace_back("filename", QuoteJSON(image.fileName));
    members.emplace_back("idiom", "\"universal\"");
    if (image.scale > 0) members.emplace_back("scale", '"' + std::to_string(image.scale) + "x\"");
    return Object(members, kDepth);
}

std::string Info() { return Object({{"author", "\"ozmira\""}, {"version", "1"}}, 1); }

/// Whether a text in JSON has a member of a value, both without blanks in them, whatever stands around it. In
/// a string that looks like it, a backslash would precede the quotes.
bool HasMember(std::string_view json, std::string_view member) {
    std::string dense;
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    std::remove_copy_if(json.begin(), json.end(), std::back_inserter(dense), isBlank);
    return dense.find(member) != std::string::npos;
}

} // namespace

std::string ImageSetContents(std::span<const ImageEntry> images, const ImageSetProperties& properties) {
    std::vector<std::string> entries;
    entries.reserve(images.size());
    for (const ImageEntry& image : images) entries.push_back(ImageObject(image));
    Members members{{"images", Enclose('[', entries, ']', 1)}, {"info", Info()}};
    Members set;
    if (properties.preservesVector) set.emplace_back("preserves-vector-representation", "true");
    if (properties.isTemplate) set.emplace_back("template-rendering-intent", "\"template\"");
    if (!set.empty()) members.emplace_back("properties", Object(set, 1));
    return Object(members, 0) + "\n";
}

std::string FolderContents(bool providesNamespace) {
    Members members{{"info", Info()}};
    if (providesNamespace) members.emplace_back("properties", Object({{"provides-namespace", "true"}}, 1));
    return Object(members, 0) + "\n";
}

bool IsOwnContents(std::string_view json) { return HasMember(json, R"("author":"ozmira")"); }

bool ProvidesNamespace(std::string_view json) { return HasMember(json, R"("provides-namespace":true)"); }

} // namespace ozm::tool
