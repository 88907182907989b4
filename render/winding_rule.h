#pragma once

#include <Ozmira/ozmStyle.h>

#include <cstdint>

namespace ozm {

/// True if a keyword of a rendering state is `WindingRule::EvenOdd`. Any other value means the nonzero rule.
constexpr bool IsEvenOdd(uint32_t rule) { return rule == static_cast<uint32_t>(WindingRule::EvenOdd); }

} // namespace ozm
