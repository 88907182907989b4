#pragma once

#include <string_view>

namespace ozm::conform {

/// True for a value that depends on more than the drawing or is given by a formula: `calc()` and its like,
/// mixed colours, colours of the system, transforms in space, lengths in units of the window or of a font.
bool IsComputedByBrowsers(std::string_view value);

} // namespace ozm::conform
