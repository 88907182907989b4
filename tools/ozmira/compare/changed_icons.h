#pragma once

#include "compare/picture_comparison.h"

#include <span>
#include <string>
#include <vector>

namespace ozm::tool {

/// Describes the results that are not the same for a page with the columns "Old" and "New", in their order.
/// Drawings are drawn for it. What can't be shown any more is described with the reason. Throws `FileError`
/// if there is not enough memory.
std::vector<std::string> DescribeChanges(std::span<const PictureComparison> results,
                                         const ComparisonSettings& settings);

} // namespace ozm::tool
