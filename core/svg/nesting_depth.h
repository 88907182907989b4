#pragma once

#include <cstdint>

namespace ozm {

/// True when the elements of NUL-terminated XML text nest deeper than `limit` levels, as the XML reader would
/// see them; it recurses once per level, so this is asked first. Text that the reader rejects before it gets
/// too deep gives false.
bool NestsDeeperThan(const char* text, uint32_t limit);

} // namespace ozm
