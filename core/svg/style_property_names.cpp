#include "svg/style_property_names.h"

#include <cstring>
#include <type_traits>
#include <utility>

namespace ozm {

constexpr std::array<std::string_view, kPresentationAttributeCount> kPresentationAttributeNames = {
    "fill",
    "fill-opacity",
    "fill-rule",
    "stroke",
    "stroke-opacity",
    "stroke-width",
    "stroke-linejoin",
    "stroke-linecap",
    "stroke-miterlimit",
    "stroke-dasharray",
    "stroke-dashoffset",
    "opacity",
    "display",
    "visibility",
    "clip-path",
    "clip-rule",
    "href",
};

namespace {

/// Compares with every name in turn. The lengths are constants, so that compilers make a switch of them.
template <size_t... Index>
StylePropertyName Find(std::string_view name, std::index_sequence<Index...>) {
    StylePropertyName found = StylePropertyName::Unknown;
    const auto matches = [&]<size_t I>(std::integral_constant<size_t, I>) {
        constexpr std::string_view kCandidate = kPresentationAttributeNames[I];
        if (name.size() != kCandidate.size() ||
            std::memcmp(name.data(), kCandidate.data(), kCandidate.size()) != 0) {
            return false;
        }
        found = static_cast<StylePropertyName>(I);
        return true;
    };
    (matches(std::integral_constant<size_t, Index>()) || ...);
    return found;
}

} // namespace

StylePropertyName FindStylePropertyName(std::string_view name) {
    return Find(name, std::make_index_sequence<kPresentationAttributeCount>());
}

} // namespace ozm
