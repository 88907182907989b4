#pragma once

#include <string_view>

namespace ozm::conform {

/// True when a list of media queries is met by a screen in a browser's initial settings: light colours, no
/// reduced motion. Features that depend on the size of the window are taken as not met.
bool MeetsMediaQuery(std::string_view list);

} // namespace ozm::conform
