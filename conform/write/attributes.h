#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ozm::conform {

/// The style attributes of an element, in the order in which they are written.
using StyleAttributes = std::vector<std::pair<std::string_view, std::string>>;

/// Appends ` name="value"`. The value needs no escapes.
inline void AppendAttribute(std::string& out, std::string_view name, std::string_view value) {
    out += ' ';
    out += name;
    out += "=\"";
    out += value;
    out += '"';
}

/// The value, or null.
inline const std::string* FindAttribute(const StyleAttributes& attributes, std::string_view name) {
    for (const auto& [key, value] : attributes) {
        if (key == name) return &value;
    }
    return nullptr;
}

} // namespace ozm::conform
