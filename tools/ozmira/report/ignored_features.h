#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace ozm::tool {

/// What a drawing uses and the parser drops, with the number of times: names of elements ("text"), and
/// features of those that are drawn ("arc in path data"). Titles, descriptions, metadata and whatever has a
/// namespace prefix are not counted; nothing of them would be seen. The text must be one that the parser
/// accepts.
std::map<std::string, uint64_t> FindIgnoredFeatures(const std::string& text);

} // namespace ozm::tool
