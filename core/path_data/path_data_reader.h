#pragma once

#include <Ozmira/ozmPath.h>
#include <Ozmira/ozmStringUtils.h>

#include "path_data/block_scanner.h"

#include <cstddef>
#include <span>
#include <vector>

namespace ozm {

/// Returns the first scanner that accepts a text of `length` characters followed by `readableAfter` readable
/// characters, or null.
const PathDataScanner* ChoosePathDataScanner(std::span<const PathDataScanner* const> scanners, size_t length,
                                             size_t readableAfter);

/// Appends the commands of path data to `commands`, up to the first character that cannot begin a command.
/// Without a scanner, reads number by number. A scanner, which must accept the text, does not change the
/// result.
void ReadPathData(StringView text, std::vector<PathCommand>& commands, const PathDataScanner* scanner);

} // namespace ozm
