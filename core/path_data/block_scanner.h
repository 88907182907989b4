#pragma once

#include <Ozmira/ozmStringUtils.h>

#include <cstddef>
#include <cstdint>
#include <span>

// Path data 64 characters at a time, with vector instructions: where numbers begin and end is found for all
// of them at once, so that none waits for the end of the one before, and several are converted at a time.

namespace ozm {

/// The most characters of a block.
constexpr size_t kPathDataBlockSize = 64;
/// Room that a block's numbers take at most: half as many as there are characters, and what conversion in
/// eights may write behind the last one.
constexpr size_t kPathDataBlockNumbers = kPathDataBlockSize / 2 + 8;
/// The most characters behind a text that a scanner reads.
constexpr size_t kMostPathDataOverrun = 6;

/// What stands in a block: numbers, command letters and what separates them.
struct PathDataBlock {
    /// How many characters are settled: all, but for a number at the end that may go on behind the block. Its
    /// sign may be settled.
    size_t size;
    /// The first of them that takes a closer look: in exponents, "+", faults, and what is unusual, such as
    /// "1." and " ,". `kPathDataBlockSize` when there is none.
    size_t irregular;
    size_t letterCount; ///< Command letters before it.
    size_t numberCount; ///< Numbers that begin before it.
    // Of the letters; behind them is anything.
    uint8_t letterAt[kPathDataBlockSize];      ///< Where each letter stands.
    uint8_t numbersBefore[kPathDataBlockSize]; ///< How many of the numbers stand before each letter.
};

/// Reads path data with the instructions of some processors. All give the same.
struct PathDataScanner {
    /// Whether this processor has the instructions. Nothing else is called where it has not.
    bool (*canRun)();

    /// At least as many as the text has letters: counts the characters from 64 to 127 and from 192 on.
    size_t (*countLetters)(StringView text);

    /// Reads the block at `at`, behind a command's letter or where the block before is settled, of a text
    /// that ends at `end`. Writes its numbers, with the values that `ReadScientificNumber` gives; but one
    /// that begins before the irregular character and reaches it has none.
    void (*scan)(const char* at, const char* end, PathDataBlock& block, double* numbers);

    size_t leastText; ///< The least length of a text that `scan` takes.
    size_t overrun;   ///< How many characters behind the text `scan` may read.
};

#if defined(__x86_64__)
extern const PathDataScanner kAVX512PathDataScanner;
extern const PathDataScanner kAVX2PathDataScanner;
#endif

/// Those that this processor can run, the fastest first; none where path data is read number by number.
std::span<const PathDataScanner* const> PathDataScanners();

/// `PathDataScanner::countLetters` on any processor.
size_t CountPathDataLetters(StringView text);

} // namespace ozm
