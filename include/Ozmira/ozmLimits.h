#pragma once

#include <Ozmira/OzmiraExport.h>

#include <cstdint>

namespace ozm {

/// The deepest nesting of elements that the parser accepts, where the root `svg` element is at level 1. Files
/// with deeper nesting count as malformed. Reading XML, walking the tree, collecting ids and drawing recurse
/// once per level, and a secondary thread on iOS has only 512 KB of stack. Real drawings stay below 50
/// levels.
inline constexpr uint32_t kMaximumNestingDepth = 1024;

/// True if the elements of NUL-terminated XML text nest deeper than `limit` levels. False for text that the
/// XML reader rejects before it gets that deep. Does not recurse.
OZM_CXX_EXPORT bool NestsDeeperThan(const char* text, uint32_t limit = kMaximumNestingDepth);

} // namespace ozm
