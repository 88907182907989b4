#pragma once

#include <cstdint>

namespace ozm {

/// Deepest nesting of elements that the parser accepts, the root `svg` element being level 1. A file that
/// goes deeper counts as malformed. Reading the XML, walking its tree, collecting ids and drawing all recurse
/// once per level, and a secondary thread on iOS has 512 KB of stack; drawings made by people stay below 50
/// levels.
inline constexpr uint32_t kMaximumNestingDepth = 1024;

/// True when the elements of NUL-terminated XML text nest deeper than `limit` levels. False for text that the
/// XML reader rejects before it gets that deep. Does not recurse.
bool NestsDeeperThan(const char* text, uint32_t limit = kMaximumNestingDepth);

} // namespace ozm
