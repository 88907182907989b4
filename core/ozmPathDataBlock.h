#pragma once

#include <cstddef>
#include <cstdint>

// Path data 64 characters at a time, with vector instructions: where numbers begin and end is found for all
// of them at once, so that none waits for the end of the one before, and they are converted in pairs.

namespace ozm {

/// The least length of a text that is read in blocks.
constexpr size_t kLeastPathDataText = 32;
/// How many characters behind the text have to be readable.
constexpr size_t kPathDataOverrun = 6;
/// The most characters of a block.
constexpr size_t kPathDataBlockSize = 64;
/// How many numbers a block writes at most, the one counted that may be written behind the last one.
constexpr size_t kPathDataBlockNumbers = kPathDataBlockSize / 2 + 1;

/// What stands in a block: numbers, command letters and what separates them.
struct PathDataBlock {
    /// How many characters are settled: all, but for a number at the end that may go on behind the block. Its
    /// sign may be settled.
    size_t size;
    /// The first of them that takes a closer look: in exponents, "+", faults, and what is unusual, such as
    /// "1." and " ,". `kPathDataBlockSize` when there is none.
    size_t irregular;
    size_t letterCount;                        ///< Command letters before it.
    size_t numberCount;                        ///< Numbers that begin before it.
    uint8_t letterAt[kPathDataBlockSize];      ///< Where each letter stands.
    uint8_t numbersBefore[kPathDataBlockSize]; ///< How many of the numbers stand before each letter.
};

/// True where this processor can run `ScanPathDataBlock`.
bool CanScanPathDataBlocks();

/// Reads the block at `at`, behind a command's letter or where the block before is settled, of a text of
/// `kLeastPathDataText` characters or more that ends at `end`. Writes its numbers, with the values that
/// `ReadScientificNumber` gives; but one that begins before the irregular character and reaches it has none.
void ScanPathDataBlock(const char* at, const char* end, PathDataBlock& block, double* numbers);

} // namespace ozm
