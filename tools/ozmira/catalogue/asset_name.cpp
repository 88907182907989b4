#include "catalogue/asset_name.h"

#include "base/text.h"

#include <algorithm>
#include <cctype>

namespace ozm::tool {
namespace {

/// True for names such as "home@2x".
bool EndsInScale(std::string_view name) {
    const size_t at = name.rfind('@');
    if (at == std::string_view::npos || !name.ends_with('x')) return false;
    const std::string_view scale = name.substr(at + 1, name.size() - at - 2);
    return !scale.empty() &&
           std::all_of(scale.begin(), scale.end(), [](unsigned char c) { return std::isdigit(c); });
}

} // namespace

std::string WhyNoAssetName(std::string_view name) {
    const auto isControl = [](unsigned char c) { return c < 0x20 || c == 0x7F; };
    if (name.empty()) return "it is empty";
    if (ValidUTF8(name) != name) return "it is not UTF-8";
    if (std::any_of(name.begin(), name.end(), isControl)) return "it contains a control character";
    if (name.starts_with('.')) return "it begins with a dot";
    if (name.starts_with(' ') || name.ends_with(' ')) return "it begins or ends with a blank";
    // Macs show it as a slash and separate folders by it.
    if (name.find(':') != std::string_view::npos) return "it contains \":\"";
    if (EndsInScale(name)) return "its end stands for a scale";
    return {};
}

std::string WhyNoGroupName(std::string_view name) {
    if (std::string problem = WhyNoAssetName(name); !problem.empty()) return problem;
    // In a catalogue the extension of a folder is its kind, as in "home.imageset".
    return name.find('.') == std::string_view::npos ? "" : "it contains a dot, which begins a kind of asset";
}

} // namespace ozm::tool
