#pragma once

#include <span>
#include <string>
#include <string_view>

namespace ozm::tool {

/// The candidate that a mistyped word most likely means: the one with the fewest wrong, missing, additional
/// or exchanged characters, at most a third of its length. Empty if there is none.
std::string Suggest(std::string_view word, std::span<const std::string> candidates);

} // namespace ozm::tool
