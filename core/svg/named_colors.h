#pragma once

#include <Ozmira/ozmStyle.h>

#include <string_view>

namespace ozm {

/// The opaque colour of one of the 147 keywords of CSS Color Module Level 3 (section 4.3), or null. Case
/// matters.
const Color* FindNamedColor(std::string_view name);

} // namespace ozm
