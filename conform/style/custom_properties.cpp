#include "style/custom_properties.h"

#include "base/limits.h"
#include "geometry/text.h"

#include <algorithm>
#include <utility>

namespace ozm::conform {
namespace {

constexpr std::string_view kReference = "var(";

/// The byte of the parenthesis that closes the one before `at`, or the size.
size_t FindClosing(std::string_view text, size_t at) {
    for (int depth = 1; at < text.size(); ++at) {
        if (text[at] == '(') ++depth;
        if (text[at] == ')' && --depth == 0) break;
    }
    return at;
}

} // namespace

bool HasVariable(std::string_view value) { return FindIgnoringCase(value, kReference) < value.size(); }

CustomProperties::CustomProperties(std::shared_ptr<const CustomProperties> outer,
                                   std::span<const Declaration> declarations, uint64_t& work)
    : m_outer(std::move(outer)), m_work(work) {
    for (const Declaration& declaration : declarations) {
        if (declaration.property != Attr::Custom || !Spend(1)) continue;
        if (!EqualsIgnoringCase(declaration.value, "inherit")) {
            m_values[declaration.name] = declaration.value;
        } else {
            m_values.erase(declaration.name);
        }
    }
}

std::optional<std::string> CustomProperties::WriteOut(std::string_view value) const {
    Writing out{{}, kMaximumVariables};
    if (!Append(value, 0, out)) return {};
    return std::move(out.text);
}

bool CustomProperties::Spend(uint64_t work) const {
    m_work -= std::min(work, m_work);
    return m_work > 0;
}

bool CustomProperties::Append(std::string_view value, int depth, Writing& out) const {
    if (depth > kMaximumVariableDepth) return false;
    while (true) {
        const size_t start = FindIgnoringCase(value, kReference);
        if (out.text.size() + start > kMaximumVariableText || !Spend(start)) return false;
        out.text += value.substr(0, start);
        if (start == value.size()) return true;
        const size_t end = FindClosing(value, start + kReference.size());
        if (end == value.size()) return false;
        const size_t first = start + kReference.size();
        if (!AppendReference(value.substr(first, end - first), depth, out)) return false;
        value.remove_prefix(end + 1);
    }
}

bool CustomProperties::AppendReference(std::string_view reference, int depth, Writing& out) const {
    const size_t comma = reference.find(',');
    const std::string_view name = Trim(reference.substr(0, comma));
    if (!name.starts_with("--") || --out.referencesLeft < 0) return false;
    for (const CustomProperties* at = this; at; at = at->m_outer.get()) {
        const auto found = at->m_values.find(name);
        if (!Spend(1 + name.size())) return false;
        if (found == at->m_values.end()) continue;
        const size_t size = out.text.size();
        if (!EqualsIgnoringCase(found->second, "initial") && at->Append(found->second, depth + 1, out))
            return true;
        out.text.resize(size);
        break;
    }
    return comma != std::string_view::npos && Append(reference.substr(comma + 1), depth + 1, out);
}

} // namespace ozm::conform
