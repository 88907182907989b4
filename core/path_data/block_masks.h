#pragma once

#include "path_data/block_scanner.h"

#include <algorithm>
#include <bit>
#include <immintrin.h>

// What the scanners of path data for x86 have in common: arithmetic with masks that have a bit for each
// character of a block, the lowest for the first.

/// For functions that are part of those of a scanner, which asks for these instructions and others.
#define OZM_BIT_MANIPULATION [[gnu::target("bmi,bmi2,popcnt"), gnu::always_inline]]

namespace ozm {

/// Characters by their classes. Behind the text may be others, but nothing else.
struct CharacterMasks {
    uint64_t digits, points, minuses, commas, letters, others;
};

/// Where the numbers of a block are, without their signs, in the words that one scanner or the other goes by.
/// A number that goes on behind the block has no end.
struct NumberMasks {
    uint64_t starts;
    uint64_t integerEnds;    ///< Of all numbers: their points, or their ends where they have none.
    uint64_t ends;           ///< Of all numbers.
    uint64_t endsOfIntegers; ///< Those of numbers without a point.
    unsigned next;           ///< Where the first number begins that is none of `starts`.
};

/// Notes the places of the letters, and how many of the numbers start before each.
OZM_BIT_MANIPULATION inline void FindLetters(uint64_t letters, uint64_t starts, PathDataBlock& block) {
    block.letterCount = static_cast<size_t>(_mm_popcnt_u64(letters));
    // In fours, because then the branch that ends the loop is seldom mispredicted.
    for (size_t i = 0; letters != 0;) {
        do {
            const auto at = static_cast<unsigned>(_tzcnt_u64(letters));
            letters = _blsr_u64(letters);
            block.letterAt[i] = static_cast<uint8_t>(at);
            block.numbersBefore[i] = static_cast<uint8_t>(_mm_popcnt_u64(_bzhi_u64(starts, at)));
        } while (++i % 4 != 0);
    }
}

/// How many characters of a block with more behind it are settled: those before a number that may go on.
OZM_BIT_MANIPULATION inline size_t SettledSize(uint64_t numeric, uint64_t starts, uint64_t minuses) {
    if (numeric >> 63 != 0) return 63 - static_cast<size_t>(std::countl_zero(starts));
    return 64 - (minuses >> 63);
}

/// Fills `block`, with `left` characters up to the end of the text, and finds its numbers.
OZM_BIT_MANIPULATION inline NumberMasks StructureBlock(const CharacterMasks& masks, size_t left,
                                                       PathDataBlock& block) {
    // A number begins where digits and points do, and again at each further point. Adding the first of the
    // digits that a run begins with carries a bit behind the last of them.
    const uint64_t numeric = masks.digits | masks.points;
    const uint64_t runs = numeric & ~(numeric << 1);
    const uint64_t behindDigits = (masks.digits + (runs & masks.digits)) & ~masks.digits;
    const uint64_t furtherPoints = masks.points & ~(behindDigits | runs);
    const uint64_t starts = runs | furtherPoints;
    const uint64_t ends = (numeric << 1) & (~numeric | furtherPoints);

    // The end of a number that a full block ends with has no bit.
    block.size = left < kPathDataBlockSize ? left : SettledSize(numeric, starts, masks.minuses);
    const uint64_t irregular = masks.others | (masks.commas & ~(numeric << 1)) |
                               (masks.minuses & ~(numeric >> 1)) | (masks.points & ~(masks.digits >> 1));
    block.irregular = _tzcnt_u64(_bzhi_u64(irregular, static_cast<unsigned>(block.size)));

    // Points without digits, of which there may be more than room for numbers, are irregular.
    const auto end = static_cast<unsigned>(std::min(block.size, block.irregular));
    const uint64_t goodStarts = _bzhi_u64(starts, end);
    block.numberCount = static_cast<size_t>(_mm_popcnt_u64(goodStarts));
    FindLetters(_bzhi_u64(masks.letters, end), goodStarts, block);
    return {goodStarts, behindDigits | (masks.points & starts), ends, ends & behindDigits,
            static_cast<unsigned>(_tzcnt_u64(starts ^ goodStarts))};
}

} // namespace ozm
