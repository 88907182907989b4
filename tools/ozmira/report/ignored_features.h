#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace ozm::tool {

/// Finds what a drawing uses but the parser ignores, and how often: names of elements ("text"), and features
/// of elements that are drawn ("arc in path data"). Titles, descriptions, metadata and whatever has a
/// namespace prefix are not counted, because they would not be visible anyway. The parser must accept the
/// text.
std::map<std::string, uint64_t> FindIgnoredFeatures(const std::string& text);

} // namespace ozm::tool
