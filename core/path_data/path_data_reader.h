#pragma once

#include <Ozmira/ozmPath.h>
#include <Ozmira/ozmStringUtils.h>

#include "path_data/block_scanner.h"

#include <cstddef>
#include <span>
#include <vector>

namespace ozm {

/// The first of the scanners that takes a text of `length` characters with `readableBehind` more behind it
/// that may be read; null where there is none.
const PathDataScanner* ChoosePathDataScanner(std::span<const PathDataScanner* const> scanners, size_t length,
                                             size_t readableBehind);

/// Appends what path data draws to `commands`, up to the first character that cannot begin a command. Reads
/// number by number without a scanner; with one, whose `leastText` and `overrun` have to be met, the result
/// is the same.
void ReadPathData(StringView text, std::vector<PathCommand>& commands, const PathDataScanner* scanner);

} // namespace ozm
