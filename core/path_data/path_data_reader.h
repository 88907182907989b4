#pragma once

#include <Ozmira/ozmPath.h>
#include <Ozmira/ozmStringUtils.h>

#include "path_data/block_scanner.h"

#include <cstddef>
#include <span>
#include <vector>

namespace ozm {

/// Returns the first of the scanners that accepts a text of `length` characters which is followed by at least
/// `readableAfter` characters that may be read, or null.
const PathDataScanner* ChoosePathDataScanner(std::span<const PathDataScanner* const> scanners, size_t length,
                                             size_t readableAfter);

/// Appends what path data draws to `commands`, up to the first character that cannot begin a command. Without
/// a scanner it reads number by number; with one that accepts the text, the result is the same.
void ReadPathData(StringView text, std::vector<PathCommand>& commands, const PathDataScanner* scanner);

} // namespace ozm
