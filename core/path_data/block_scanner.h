#pragma once

#include <Ozmira/ozmStringUtils.h>

#include <cstddef>
#include <cstdint>
#include <span>

// Scanning path data in blocks of 64 characters with vector instructions. Where numbers begin and end is
// found for a whole block at once, so that no number waits for the end of the one before it, and several
// numbers are converted at a time.

namespace ozm {

/// The number of characters of a full block.
constexpr size_t kPathDataBlockSize = 64;
/// The room that a scanner needs for the numbers of a block: a block holds at most half as many numbers as
/// characters, and conversion in groups of eight may write up to eight values after the last number.
constexpr size_t kPathDataBlockNumbers = kPathDataBlockSize / 2 + 8;
/// An upper bound for `PathDataScanner::overrun`.
constexpr size_t kMaxPathDataOverrun = 6;

/// What a scanner finds in a block, apart from the values of the numbers.
struct PathDataBlock {
    /// The number of characters consumed.
    size_t consumed;
    /// The offset of the first consumed character that needs a closer look; `kPathDataBlockSize` when there
    /// is none. Exponents, "+" and errors need one, and so do unusual spellings such as "1." and " ,".
    size_t irregular;
    size_t letterCount; ///< The number of command letters before `irregular`.
    size_t numberCount; ///< The number of numbers that begin before `irregular`.
    // One entry for each of these letters. The remaining entries are unspecified.
    uint8_t letterOffsets[kPathDataBlockSize];
    uint8_t numbersBefore[kPathDataBlockSize]; ///< How many of the block's numbers precede the letter.
};

/// Scans path data with the instructions of one family of processors. All scanners return the same results.
struct PathDataScanner {
    const char* name; ///< The instruction set.

    /// Returns an upper bound for the number of letters in a text of at least `shortestText` characters: the
    /// number of its characters from 64 to 127 and from 192 on.
    size_t (*countLetters)(StringView text);

    /// Scans the block that starts at `at`, in a text that ends at `end`.
    ///
    /// `at` points after the letter of a text's first command, or after the characters that the call for the
    /// preceding block consumed, and before `end`.
    ///
    /// Consumed are all characters up to the end of the text, but at most 64. When 64 or more are left, a
    /// number that reaches the end of the block is not consumed, because it may continue: the next block
    /// starts with it, or after its minus sign. The scanner therefore looks for that sign at `at[-1]`. A
    /// number that fills a block leaves nothing to consume; the caller then reads on without a scanner.
    ///
    /// The caller owns `numbers`, an array with room for `kPathDataBlockNumbers` values. The scanner fills in
    /// `block.numberCount` values, which are those of `ReadScientificNumber`, and may overwrite the rest of
    /// the room. The value of a number that reaches up to the irregular character is unspecified.
    ///
    /// The scanner reads nothing before the text, but up to `overrun` characters past its end. The caller
    /// guarantees that they can be read, whatever they are: no result depends on them. It also guarantees
    /// that the whole text, from its first command's letter or earlier to `end`, has at least `shortestText`
    /// characters, because the last block of a text may be loaded together with characters that precede it.
    void (*scan)(const char* at, const char* end, PathDataBlock& block, double* numbers);

    size_t shortestText;
    size_t overrun;
};

/// The scanners that this processor can run, the fastest first. There are none in a build without Highway.
std::span<const PathDataScanner* const> PathDataScanners();

} // namespace ozm
