#include "path_data/block_scanner.h"

// Stands in for vector_block_scanner.cpp in builds without Highway.

namespace ozm {

std::span<const PathDataScanner* const> PathDataScanners() { return {}; }

} // namespace ozm
