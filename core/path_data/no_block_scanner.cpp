#include "path_data/block_scanner.h"

// Replaces vector_block_scanner.cpp in builds without Highway.

namespace ozm {

std::span<const PathDataScanner* const> PathDataScanners() { return {}; }

} // namespace ozm
