#pragma once

#include <Ozmira/ozmStringUtils.h>

#include <cstddef>
#include <cstdint>
#include <span>

// Scans path data in blocks of 64 characters with vector instructions. The starts and ends of all numbers of
// a block are found at once, so that no number has to wait for the end of the previous one, and several
// numbers are converted at a time.

namespace ozm {

/// The number of characters of a full block.
constexpr size_t kPathDataBlockSize = 64;
/// The number of values that a scanner may write for a block. A block has at most half as many numbers as
/// characters, and converting in groups of eight may write up to eight values after the last number.
constexpr size_t kPathDataBlockNumbers = kPathDataBlockSize / 2 + 8;
/// An upper bound for `PathDataScanner::overrun`.
constexpr size_t kMaxPathDataOverrun = 6;

/// The contents of a block, apart from the values of its numbers.
struct PathDataBlock {
    /// The number of characters consumed.
    size_t consumed;
    /// The offset of the first consumed character that the scanner does not handle, or `kPathDataBlockSize`.
    /// Such characters are exponents, "+", errors, and unusual notations such as "1." and " ,".
    size_t irregular;
    size_t letterCount; ///< Command letters before `irregular`.
    size_t numberCount; ///< Numbers that begin before `irregular`.
    // One entry per letter. The remaining entries are unspecified.
    uint8_t letterOffsets[kPathDataBlockSize];
    uint8_t numbersBefore[kPathDataBlockSize]; ///< How many of the block's numbers precede the letter.
};

/// Scans path data with the instructions of one family of processors. All scanners return the same results.
struct PathDataScanner {
    const char* name; ///< The instruction set.

    /// Returns an upper bound for the number of letters in a text of at least `shortestText` characters: the
    /// number of its characters with codes from 64 to 127 and from 192 to 255.
    size_t (*countLetters)(StringView text);

    /// Scans the block that starts at `at`, in a text that ends at `end`.
    ///
    /// `at` is before `end`. It points past the letter of the text's first command, or past the characters
    /// consumed by the call for the previous block.
    ///
    /// The scanner consumes all characters up to the end of the text, but at most 64. If there are 64
    /// or more, a number that touches the block's end is left for the next block, because it may
    /// continue there; its minus sign may already be consumed, so the scanner looks for one at `at[-1]`. If a
    /// number fills the whole block, nothing is consumed, and the caller has to continue without a scanner.
    ///
    /// `numbers` is an array of `kPathDataBlockNumbers` values, which the caller owns. The scanner stores
    /// `block.numberCount` values, those that `ReadScientificNumber` returns, and may overwrite the others.
    /// The value of a number that touches the irregular character is unspecified.
    ///
    /// The scanner reads nothing before the text, but up to `overrun` characters past its end. The caller
    /// guarantees that they are readable; no result depends on them. The last block of a text may be loaded
    /// together with preceding characters. Therefore the text must have at least `shortestText` characters
    /// from the letter of its first command, or earlier, to `end`.
    void (*scan)(const char* at, const char* end, PathDataBlock& block, double* numbers);

    size_t shortestText; ///< Length of the shortest text that the scanner accepts.
    size_t overrun;      ///< Number of characters that must be readable past the end of a text.
};

/// The scanners that this processor supports, the fastest first. Empty in a build without Highway.
std::span<const PathDataScanner* const> PathDataScanners();

} // namespace ozm
