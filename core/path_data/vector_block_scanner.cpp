#include "path_data/block_scanner.h"

#include "numbers/list_number_reader.h"
#include "path_data/block_scanner_tables.h"
#include "support/vector_targets.h"

#include <algorithm>
#include <bit>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE                                                                                   \
    "path_data/vector_block_scanner.cpp" // NOLINT: Highway's way to include a file once per target
#include <hwy/foreach_target.h>          // IWYU pragma: keep
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace ozm::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using Bytes = hn::CappedTag<uint8_t, kPathDataBlockSize>;
using ByteVector = hn::Vec<Bytes>;
using ByteMask = hn::Mask<Bytes>;

constexpr size_t kLanes = hn::MaxLanes(Bytes());
constexpr size_t kVectors = kPathDataBlockSize / kLanes;

// The masks of a block are integers with one bit per character, the lowest bit for the first character.

HWY_INLINE size_t CountBits(uint64_t mask) { return static_cast<size_t>(std::popcount(mask)); }
/// The index of the lowest set bit, or 64 if none is set.
HWY_INLINE size_t FindFirst(uint64_t mask) { return static_cast<size_t>(std::countr_zero(mask)); }
HWY_INLINE uint64_t WithoutFirst(uint64_t mask) { return mask & (mask - 1); }
/// The bits below the lowest set bit; all bits when none is set.
HWY_INLINE uint64_t BitsBeforeFirst(uint64_t mask) { return ~mask & (mask - 1); }
/// The bits up to the lowest set bit, inclusive; all bits when none is set.
HWY_INLINE uint64_t BitsUpToFirst(uint64_t mask) { return mask ^ (mask - 1); }

/// The characters of a block.
struct Characters {
    // An implicit constructor would not be compiled for the selected instruction set.
    HWY_INLINE Characters() {}

    ByteVector vectors[kVectors];
    /// The number of characters in `vectors` that precede the block.
    size_t preceding = 0;
};

/// Whether a load can be limited to the characters of the text. Otherwise, the block that contains the end of
/// the text is loaded together with characters before the block.
constexpr bool kLoadsPartially = HWY_TARGET == HWY_AVX3;
static_assert(!kLoadsPartially || kVectors == 1);

HWY_INLINE Characters LoadBlock(const char* at, size_t size) {
    const Bytes d;
    Characters characters;
#if HWY_TARGET == HWY_AVX3
    characters.vectors[0] =
        ByteVector{_mm512_maskz_loadu_epi8(~uint64_t{0} >> (kPathDataBlockSize - size), at)};
    static_cast<void>(d);
#else
    characters.preceding = kPathDataBlockSize - size;
    const auto* const bytes = reinterpret_cast<const uint8_t*>(at - characters.preceding);
    for (size_t i = 0; i < kVectors; ++i) characters.vectors[i] = hn::LoadU(d, bytes + i * kLanes);
#endif
    return characters;
}

HWY_INLINE uint64_t JoinMasks(const ByteMask (&masks)[kVectors]) {
#if HWY_TARGET == HWY_NEON
    // Converting the mask of one vector to bits takes eight instructions, converting four masks together
    // nine.
    const hn::FixedTag<uint8_t, 16> d;
    alignas(16) constexpr uint8_t kBits[16] = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
    const auto bits = hn::Load(d, kBits);
    const auto select = [&](size_t i) { return hn::IfThenElseZero(masks[i], bits).raw; };
    const uint8x16_t quarters = vpaddq_u8(vpaddq_u8(select(0), select(1)), vpaddq_u8(select(2), select(3)));
    return vgetq_lane_u64(vreinterpretq_u64_u8(vpaddq_u8(quarters, quarters)), 0);
#else
    uint64_t joined = 0;
    for (size_t i = 0; i < kVectors; ++i) {
        uint8_t bytes[8];
        hn::StoreMaskBits(Bytes(), masks[i], bytes);
        uint64_t bits = 0;
        std::memcpy(&bits, bytes, kLanes / 8);
        joined |= bits << (i * kLanes);
    }
    return joined;
#endif
}

/// The mask of the characters for which `test`, a function that maps a vector to a mask, is true.
template <class Test>
HWY_INLINE uint64_t MaskWhere(const Characters& characters, Test test) {
    ByteMask masks[kVectors];
    for (size_t i = 0; i < kVectors; ++i) masks[i] = test(characters.vectors[i]);
    return JoinMasks(masks) >> characters.preceding;
}

/// One mask per class of characters. Past the end of the text, only `others` may be set.
struct CharacterMasks {
    uint64_t digits, points, minuses, commas, letters, others;
};

HWY_INLINE CharacterMasks ClassifyCharacters(const Characters& characters) {
    const Bytes d;
    const auto lowHalves = hn::LoadDup128(d, kClassesByLowHalf.data());
    const auto highHalves = hn::LoadDup128(d, kClassesByHighHalf.data());
    Characters classes;
    classes.preceding = characters.preceding;
    for (size_t i = 0; i < kVectors; ++i) {
        const auto v = characters.vectors[i];
        classes.vectors[i] = hn::And(hn::TableLookupBytes(lowHalves, hn::And(v, hn::Set(d, uint8_t{15}))),
                                     hn::TableLookupBytes(highHalves, hn::ShiftRight<4>(v)));
    }
    const auto isOf = [&](ByteVector v, uint8_t characterClass) {
        return hn::Eq(v, hn::Set(d, characterClass));
    };
    const auto maskOf = [&](uint8_t characterClass) {
        return MaskWhere(classes, [&](ByteVector v) { return isOf(v, characterClass); });
    };
    CharacterMasks masks;
    masks.digits = maskOf(kDigit);
    masks.points = maskOf(kPoint);
    masks.minuses = maskOf(kMinus);
    masks.commas = maskOf(kComma);
    masks.letters =
        MaskWhere(classes, [&](ByteVector v) { return hn::Or(isOf(v, kLetterPToZ), isOf(v, kLetterAToO)); });
    masks.others = maskOf(0);
    return masks;
}

/// Where the numbers of a block, without their signs, start and end. Each mask has one bit per number.
struct NumberMasks {
    uint64_t starts;
    uint64_t integerEnds; ///< The points, and the ends of numbers that have none.
    uint64_t ends;
};

/// Stores the letters in `block`. Finds them in groups of four, because the branch at the end of the loop is
/// then rarely mispredicted, which saves 3 % of parsing.
HWY_INLINE void FindLetters(uint64_t letters, uint64_t starts, PathDataBlock& block) {
    block.letterCount = CountBits(letters);
    for (size_t i = 0; letters != 0;) {
        do {
            block.letterOffsets[i] = static_cast<uint8_t>(FindFirst(letters));
            block.numbersBefore[i] = static_cast<uint8_t>(CountBits(starts & BitsBeforeFirst(letters)));
            letters = WithoutFirst(letters);
        } while (++i % 4 != 0);
    }
}

/// Fills in `block` and returns the numbers that begin before its irregular character. `left` is the number
/// of characters from the start of the block to the end of the text.
HWY_INLINE NumberMasks FindNumbers(const CharacterMasks& masks, size_t left, PathDataBlock& block) {
    // A number starts at the start of each run of digits and points, and at each further point of a run.
    // Adding the bit of the first digit of a run to the bits of its digits carries a bit past the last of
    // them.
    const uint64_t numeric = masks.digits | masks.points;
    const uint64_t runs = numeric & ~(numeric << 1);
    const uint64_t integerEnds = (masks.digits + (runs & masks.digits)) & ~masks.digits;
    const uint64_t furtherPoints = masks.points & ~(integerEnds | runs);
    const uint64_t starts = runs | furtherPoints;
    const uint64_t ends = (numeric << 1) & (~numeric | furtherPoints);

    // The first character that is not consumed. A number at the end of a full block, or its sign, is left.
    constexpr uint64_t kLastBit = uint64_t{1} << 63;
    const uint64_t limit = left < kPathDataBlockSize   ? uint64_t{1} << left
                           : (numeric & kLastBit) != 0 ? std::bit_floor(starts)
                                                       : masks.minuses & kLastBit;
    const uint64_t irregular =
        BitsBeforeFirst(limit) & (masks.others | (masks.commas & ~(numeric << 1)) |
                                  (masks.minuses & ~(numeric >> 1)) | (masks.points & ~(masks.digits >> 1)));
    block.consumed = FindFirst(limit);
    block.irregular = FindFirst(irregular);

    const uint64_t regular = BitsBeforeFirst(irregular | limit);
    const uint64_t regularStarts = starts & regular;
    block.numberCount = CountBits(regularStarts);
    FindLetters(masks.letters & regular, regularStarts, block);
    // A number may end where the next one starts.
    const uint64_t otherStarts = starts ^ regularStarts;
    return {regularStarts, (integerEnds | (masks.points & starts)) & BitsBeforeFirst(otherStarts),
            ends & BitsUpToFirst(otherStarts)};
}

/// Converts the numbers of the block at `at` that start at `selected`, one by one, and stores them at their
/// indices in `numbers`. Not inlined, so that the common case need not save its vectors.
HWY_NOINLINE void ConvertOneByOne(const char* at, const char* end, uint64_t starts, uint64_t selected,
                                  double* numbers) {
    for (; selected != 0; selected = WithoutFirst(selected)) {
        const char* const start = at + FindFirst(selected);
        double& number = numbers[CountBits(starts & BitsBeforeFirst(selected))];
        ReadScientificNumber(start - (start[-1] == '-'), end, number);
    }
}

#undef OZM_TARGET
#if HWY_TARGET == HWY_AVX3

// Converts eight numbers at a time with the byte instructions of AVX-512 (VBMI and VBMI2), which Highway does
// not offer. Saves 7 % of parsing compared to two numbers at a time.
#define OZM_TARGET [[gnu::target(HWY_TARGET_STR ",avx512vbmi,avx512vbmi2")]]

/// The bytes of a vector, computed from their indices.
template <typename ByteAt>
constexpr std::array<uint8_t, 64> MakeBytes(ByteAt byteAt) {
    std::array<uint8_t, 64> bytes{};
    for (size_t i = 0; i < 64; ++i) bytes[i] = static_cast<uint8_t>(byteAt(i));
    return bytes;
}

OZM_TARGET inline __m512i LoadBytes(const std::array<uint8_t, 64>& bytes) {
    return _mm512_load_si512(bytes.data());
}

OZM_TARGET inline __m512i FillBytes(int byte) { return _mm512_set1_epi8(static_cast<char>(byte)); }

/// Where the numbers of a block start and end, one byte per number. A number without a point is treated as if
/// a point followed it.
struct NumberOffsets {
    __m512i starts, points, ends;
    __m512i shifts; ///< Bits by which to shift the digits of a number so that the last one is the eighth.
};

alignas(64) constexpr auto kIndices = MakeBytes([](size_t i) { return i; });
/// Indexed by the length of a number, including its point.
alignas(64) constexpr auto kShifts = MakeBytes([](size_t i) { return i % 16 <= 9 ? (9 - i % 16) * 8 : 0; });

OZM_TARGET inline NumberOffsets FindOffsets(const NumberMasks& masks, uint64_t pointCharacters) {
    const __m512i indices = LoadBytes(kIndices), past = FillBytes(64);
    const uint64_t withoutPoint = masks.ends & masks.integerEnds & ~pointCharacters;
    const uint64_t ends = (masks.ends ^ withoutPoint) | withoutPoint << 1;
    NumberOffsets offsets;
    offsets.starts = _mm512_maskz_compress_epi8(masks.starts, indices);
    offsets.points = _mm512_mask_compress_epi8(past, masks.integerEnds, indices);
    offsets.ends = _mm512_mask_compress_epi8(past, ends, indices);
    offsets.shifts = _mm512_shuffle_epi8(LoadBytes(kShifts), _mm512_sub_epi8(offsets.ends, offsets.starts));
    return offsets;
}

alignas(64) constexpr auto kIndicesOfEights = MakeBytes([](size_t i) { return i / 8; });
alignas(64) constexpr auto kIndicesInEights = MakeBytes([](size_t i) { return i % 8; });
/// Divisors, indexed by the number of characters from the point to the end of the number. For unused places,
/// any divisor but 0 will do.
alignas(64) constexpr double kDivisors[16] = {1,   1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6,
                                              1e7, 1e8, 1,   1,   1,   1,   1,   1};

/// Converts eight numbers of up to eight digits, starting with the number at index `first`. Combines digits
/// into pairs, and pairs into pairs of pairs. `isNegative` has one bit per number.
OZM_TARGET inline void ConvertEight(__m512i characters, const NumberOffsets& offsets, size_t first,
                                    uint64_t isNegative, double* numbers) {
    const __m512i number = _mm512_add_epi8(LoadBytes(kIndicesOfEights), FillBytes(static_cast<int>(first)));
    const __m512i start = _mm512_permutexvar_epi8(number, offsets.starts);
    const __m512i point = _mm512_permutexvar_epi8(number, offsets.points);
    const __m512i end = _mm512_permutexvar_epi8(number, offsets.ends);
    const __m512i shift = _mm512_maskz_permutexvar_epi8(0x0101010101010101, number, offsets.shifts);

    // Remove the point, then shift the last digit into the highest byte.
    __m512i from = _mm512_add_epi8(start, LoadBytes(kIndicesInEights));
    from = _mm512_mask_add_epi8(from, _mm512_cmpge_epi8_mask(from, point), from, FillBytes(1));
    const __m512i digits = _mm512_and_si512(_mm512_permutexvar_epi8(from, characters), FillBytes(15));
    const __m512i ones = _mm512_sllv_epi64(digits, shift);
    const __m512i twos = _mm512_maddubs_epi16(ones, _mm512_set1_epi16(10 | 1 << 8));
    const __m512i fours = _mm512_madd_epi16(twos, _mm512_set1_epi32(100 | 1 << 16));
    const __m512i eights =
        _mm512_add_epi64(_mm512_mul_epu32(fours, _mm512_set1_epi64(10000)), _mm512_srli_epi64(fours, 32));

    // Both operands are exact, so the division rounds only once.
    const __m512d divisor = _mm512_permutex2var_pd(_mm512_load_pd(kDivisors), _mm512_sub_epi8(end, point),
                                                   _mm512_load_pd(kDivisors + 8));
    const __m512d quotient = _mm512_div_pd(_mm512_cvtepi64_pd(eights), divisor);
    _mm512_storeu_pd(numbers, _mm512_mask_xor_pd(quotient, static_cast<__mmask8>(isNegative), quotient,
                                                 _mm512_set1_pd(-0.0)));
}

OZM_TARGET inline void ConvertNumbers(__m512i characters, const char* at, const char* end,
                                      const CharacterMasks& characterMasks, const NumberMasks& masks,
                                      double* numbers) {
    const NumberOffsets offsets = FindOffsets(masks, characterMasks.points);
    const size_t count = CountBits(masks.starts);
    const uint64_t isNegative =
        _pext_u64(characterMasks.minuses << 1 | uint64_t{at[-1] == '-'}, masks.starts);
    for (size_t i = 0; i < count; i += 8) {
        ConvertEight(characters, offsets, i, isNegative >> i, numbers + i);
    }
    const uint64_t isLong =
        _mm512_cmpgt_epi8_mask(_mm512_sub_epi8(offsets.ends, offsets.starts), FillBytes(9));
    const uint64_t longStarts = _pdep_u64(isLong, masks.starts);
    if (longStarts != 0) ConvertOneByOne(at, end, masks.starts, longStarts, numbers);
}

OZM_TARGET inline void ConvertNumbers(const Characters& characters, const char* at, const char* end,
                                      const CharacterMasks& characterMasks, const NumberMasks& masks,
                                      double* numbers) {
    ConvertNumbers(characters.vectors[0].raw, at, end, characterMasks, masks, numbers);
}

#else
#define OZM_TARGET

/// The position of a number in its block, without its sign.
struct NumberPlace {
    size_t offset, length, integerDigits;
};

/// Removes the first number from `masks` and returns it. If there is none, returns an empty one inside the
/// block.
HWY_INLINE NumberPlace TakeFirst(NumberMasks& masks) {
    const size_t start = FindFirst(masks.starts);
    const NumberPlace place = {start % kPathDataBlockSize, FindFirst(masks.ends) - start,
                               FindFirst(masks.integerEnds) - start};
    masks = {WithoutFirst(masks.starts), WithoutFirst(masks.integerEnds), WithoutFirst(masks.ends)};
    return place;
}

/// Converts two numbers of up to `kMaxLayoutLength` characters.
HWY_INLINE void ConvertTwo(const char* at, const NumberPlace& a, const NumberPlace& b, double* numbers) {
    const hn::FixedTag<uint8_t, 16> d8;
    const hn::FixedTag<uint16_t, 8> d16;
    const hn::FixedTag<uint32_t, 4> d32;
    const hn::FixedTag<uint64_t, 2> d64;
    const hn::FixedTag<double, 2> dDouble;
    const hn::Half<decltype(d8)> dHalf;
    const auto load = [&](const NumberPlace& place) {
        // The first of the eight characters precedes the number and may be its minus sign.
        return hn::LoadU(dHalf, reinterpret_cast<const uint8_t*>(at + place.offset - 1));
    };
    const auto characters = hn::Combine(d8, load(b), load(a));
    const auto isMinus = hn::VecFromMask(d8, hn::Eq(characters, hn::Set(d8, uint8_t{'-'})));
    const auto signs = hn::ShiftLeft<63>(hn::BitCast(d64, isMinus));
    const auto layoutA = hn::Load(d64, kNumberLayouts[a.length][a.integerDigits].data());
    const auto layoutB = hn::Load(d64, kNumberLayouts[b.length][b.integerDigits].data());

    // Combine digits into pairs, pairs into fours, and fours into eights. The first two multiplications leave
    // the wanted sum in the upper half of each product.
    const auto shuffle = hn::Add(hn::BitCast(d8, hn::InterleaveLower(d64, layoutA, layoutB)),
                                 hn::Combine(d8, hn::Set(dHalf, uint8_t{8}), hn::Zero(dHalf)));
    const auto digits = hn::TableLookupBytesOr0(hn::And(characters, hn::Set(d8, uint8_t{15})), shuffle);
    const auto twos =
        hn::ShiftRight<8>(hn::Mul(hn::BitCast(d16, digits), hn::Set(d16, uint16_t{10 << 8 | 1})));
    const auto fours =
        hn::ShiftRight<16>(hn::Mul(hn::BitCast(d32, twos), hn::Set(d32, uint32_t{100 << 16 | 1})));
    const auto eights = hn::Add(hn::MulEven(fours, hn::Set(d32, uint32_t{10000})),
                                hn::ShiftRight<32>(hn::BitCast(d64, fours)));

    // The doubles from 2^52 to 2^53 are the integers, whose low 52 bits a double stores as they are. So the
    // integers are put into the bits of 2^52, which is then subtracted.
    const auto twoTo52 = hn::Set(dDouble, 4503599627370496.0);
    const auto values = hn::Sub(hn::Or(hn::BitCast(dDouble, eights), twoTo52), twoTo52);
    // Both operands are exact, so the division rounds only once.
    const auto divisors = hn::BitCast(dDouble, hn::InterleaveUpper(d64, layoutA, layoutB));
    hn::StoreU(hn::Xor(hn::Div(values, divisors), hn::BitCast(dDouble, signs)), dDouble, numbers);
}

HWY_INLINE void ConvertNumbers(const Characters&, const char* at, const char* end, const CharacterMasks&,
                               NumberMasks masks, double* numbers) {
    // In groups of four, because the branch at the end of the loop is then rarely mispredicted, which saves
    // 2 % of parsing.
    while (masks.starts != 0) {
        const uint64_t remaining = masks.starts;
        const NumberPlace a = TakeFirst(masks), b = TakeFirst(masks), c = TakeFirst(masks),
                          d = TakeFirst(masks);
        if ((a.length | b.length | c.length | d.length) > kMaxLayoutLength) {
            return ConvertOneByOne(at, end, remaining, remaining, numbers);
        }
        ConvertTwo(at, a, b, numbers);
        ConvertTwo(at, c, d, numbers + 2);
        numbers += 4;
    }
}

#endif

size_t CountLetters(StringView text) {
    const auto letterBit = hn::Set(Bytes(), uint8_t{0x40});
    size_t count = 0;
    for (const char* at = text.begin(); at < text.end(); at += kPathDataBlockSize) {
        const auto left = static_cast<size_t>(text.end() - at);
        const Characters characters = LoadBlock(at, std::min(left, kPathDataBlockSize));
        count += CountBits(MaskWhere(characters, [&](ByteVector v) { return hn::TestBit(v, letterBit); }));
    }
    return count;
}

OZM_TARGET void Scan(const char* at, const char* end, PathDataBlock& block, double* numbers) {
    const auto left = static_cast<size_t>(end - at);
    const Characters characters = LoadBlock(at, std::min(left, kPathDataBlockSize));
    const CharacterMasks characterMasks = ClassifyCharacters(characters);
    const NumberMasks numberMasks = FindNumbers(characterMasks, left, block);
    ConvertNumbers(characters, at, end, characterMasks, numberMasks, numbers);
}

} // namespace

// The name of the instruction set is the namespace's name without "N_".
extern const PathDataScanner kPathDataScanner;
constinit const PathDataScanner kPathDataScanner = {&HWY_STR(HWY_NAMESPACE)[2], CountLetters, Scan,
                                                    kLoadsPartially ? 0 : kPathDataBlockSize,
                                                    kLoadsPartially ? 0 : kMaxPathDataOverrun};

} // namespace ozm::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ozm {

std::span<const PathDataScanner* const> PathDataScanners() {
#if HWY_TARGETS & HWY_AVX3
    static constexpr const PathDataScanner* kScanners[] = {
        &N_AVX3::kPathDataScanner, &N_AVX2::kPathDataScanner, &N_SSE4::kPathDataScanner,
        &N_EMU128::kPathDataScanner};
    auto fastest = support::FastestVectorTarget();
    const bool hasVBMI2 = __builtin_cpu_supports("avx512vbmi") && __builtin_cpu_supports("avx512vbmi2");
    if (fastest == support::VectorTarget::AVX3 && !hasVBMI2) fastest = support::VectorTarget::AVX2;
    return std::span(kScanners).subspan(static_cast<size_t>(fastest));
#else
    static constexpr const PathDataScanner* kScanners[] = {&HWY_NAMESPACE::kPathDataScanner};
    return kScanners;
#endif
}

} // namespace ozm
#endif // HWY_ONCE
