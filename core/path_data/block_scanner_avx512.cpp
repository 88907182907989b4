#include "path_data/block_scanner.h"

#if defined(__x86_64__)

#include "numbers/list_number_reader.h"
#include "path_data/block_masks.h"
#include "path_data/command_letters.h"

#include <algorithm>
#include <array>
#include <immintrin.h>

#if defined(__GNUC__) && !defined(__clang__)
// GCC 12 says so of its own header.
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

// What these functions use is asked for before the first of them is called.
#define OZM_AVX512 [[gnu::target("avx512f,avx512bw,avx512dq,avx512vbmi,avx512vbmi2,bmi,bmi2,popcnt")]]

namespace ozm {
namespace {

/// 64 bytes for one vector, each from its index.
template <typename ByteAt>
constexpr std::array<uint8_t, 64> MakeBytes(ByteAt byteAt) {
    std::array<uint8_t, 64> bytes{};
    for (size_t i = 0; i < 64; ++i) bytes[i] = static_cast<uint8_t>(byteAt(i));
    return bytes;
}

OZM_AVX512 inline __m512i Load(const std::array<uint8_t, 64>& bytes) {
    return _mm512_load_si512(bytes.data());
}

OZM_AVX512 inline __m512i Fill(int byte) { return _mm512_set1_epi8(static_cast<char>(byte)); }

OZM_AVX512 inline __m512i LoadUpTo64(const char* text, size_t size) {
    return _mm512_maskz_loadu_epi8(_bzhi_u64(~uint64_t{0}, static_cast<unsigned>(size)), text);
}

/// The digits' one is the sign bit.
enum CharacterClass : uint8_t {
    kDigit = 0x80,
    kPoint = 0x10,
    kMinus = 0x08,
    kComma = 0x04,
    kLetter = 0x02,
    kSpace = 0x01,
};

constexpr uint8_t ClassOf(size_t character) {
    const auto c = static_cast<char>(character);
    if (isNumericDigit(c)) return kDigit;
    if (IsCommandLetter(c)) return kLetter;
    if (IsWhitespace(c)) return kSpace;
    return c == '.' ? kPoint : c == '-' ? kMinus : c == ',' ? kComma : 0;
}

alignas(64) constexpr auto kClassesTo63 = MakeBytes(ClassOf);
alignas(64) constexpr auto kClassesTo127 = MakeBytes([](size_t i) { return ClassOf(64 + i); });

OZM_AVX512 inline CharacterMasks MaskCharacters(__m512i characters) {
    // Character 127 stands for all behind it.
    const __m512i indices = _mm512_min_epu8(characters, Fill(127));
    const __m512i classes = _mm512_permutex2var_epi8(Load(kClassesTo63), indices, Load(kClassesTo127));
    CharacterMasks masks;
    masks.digits = _mm512_movepi8_mask(classes);
    masks.points = _mm512_test_epi8_mask(classes, Fill(kPoint));
    masks.minuses = _mm512_test_epi8_mask(classes, Fill(kMinus));
    masks.commas = _mm512_test_epi8_mask(classes, Fill(kComma));
    masks.letters = _mm512_test_epi8_mask(classes, Fill(kLetter));
    masks.others = _mm512_testn_epi8_mask(classes, classes);
    return masks;
}

/// The numbers of a block, a byte for each. A number without a point is treated as if one followed its
/// digits.
struct NumberPlaces {
    __m512i starts, points, ends;
    __m512i shifts; ///< By how many bits eight digits are more than the number has.
};

alignas(64) constexpr auto kPositions = MakeBytes([](size_t i) { return i; });
/// By the number's characters, point included.
alignas(64) constexpr auto kShifts = MakeBytes([](size_t i) { return i % 16 <= 9 ? (9 - i % 16) * 8 : 0; });

OZM_AVX512 inline NumberPlaces PlaceNumbers(const NumberMasks& masks) {
    const __m512i positions = Load(kPositions), behind = Fill(64);
    const uint64_t ends = (masks.ends ^ masks.endsOfIntegers) | masks.endsOfIntegers << 1;
    NumberPlaces places;
    places.starts = _mm512_maskz_compress_epi8(masks.starts, positions);
    places.points = _mm512_mask_compress_epi8(behind, masks.integerEnds, positions);
    places.ends = _mm512_mask_compress_epi8(behind, ends, positions);
    places.shifts = _mm512_shuffle_epi8(Load(kShifts), _mm512_sub_epi8(places.ends, places.starts));
    return places;
}

alignas(64) constexpr auto kWhichEight = MakeBytes([](size_t i) { return i / 8; });
alignas(64) constexpr auto kWhichOfEight = MakeBytes([](size_t i) { return i % 8; });
/// Divisors by the number of characters from the point on. Where there is no number it may be any, but not 0.
alignas(64) constexpr double kPowersOfTen[16] = {1,   1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6,
                                                 1e7, 1e8, 1,   1,   1,   1,   1,   1};

/// Converts eight numbers of up to eight digits, from the `first` one on: adds up pairs of digits, then pairs
/// of pairs. `isNegative` has a bit for each of them.
OZM_AVX512 inline void ConvertEight(__m512i characters, const NumberPlaces& places, size_t first,
                                    uint64_t isNegative, double* numbers) {
    const __m512i number = _mm512_add_epi8(Load(kWhichEight), Fill(static_cast<int>(first)));
    const __m512i start = _mm512_permutexvar_epi8(number, places.starts);
    const __m512i point = _mm512_permutexvar_epi8(number, places.points);
    const __m512i end = _mm512_permutexvar_epi8(number, places.ends);
    const __m512i shift = _mm512_maskz_permutexvar_epi8(0x0101010101010101, number, places.shifts);

    // Leave the point out, then move the last digit into the highest byte.
    __m512i from = _mm512_add_epi8(start, Load(kWhichOfEight));
    from = _mm512_mask_add_epi8(from, _mm512_cmpge_epi8_mask(from, point), from, Fill(1));
    const __m512i digits = _mm512_and_si512(_mm512_permutexvar_epi8(from, characters), Fill(15));
    const __m512i ones = _mm512_sllv_epi64(digits, shift);
    const __m512i twos = _mm512_maddubs_epi16(ones, _mm512_set1_epi16(10 | 1 << 8));
    const __m512i fours = _mm512_madd_epi16(twos, _mm512_set1_epi32(100 | 1 << 16));
    const __m512i eights =
        _mm512_add_epi64(_mm512_mul_epu32(fours, _mm512_set1_epi64(10000)), _mm512_srli_epi64(fours, 32));

    // Both are exact, so that the division rounds once.
    const __m512d divisor = _mm512_permutex2var_pd(_mm512_load_pd(kPowersOfTen), _mm512_sub_epi8(end, point),
                                                   _mm512_load_pd(kPowersOfTen + 8));
    const __m512d quotient = _mm512_div_pd(_mm512_cvtepi64_pd(eights), divisor);
    _mm512_storeu_pd(numbers, _mm512_mask_xor_pd(quotient, static_cast<__mmask8>(isNegative), quotient,
                                                 _mm512_set1_pd(-0.0)));
}

/// Of numbers of more than eight digits; `which` has a bit for each. Never inlined, so that the common case
/// need not save its vectors.
OZM_AVX512 [[gnu::noinline]] void ConvertLongNumbers(const char* at, const char* textEnd, uint64_t starts,
                                                     uint64_t which, double* numbers) {
    for (; which != 0; which = _blsr_u64(which)) {
        const uint64_t index = _tzcnt_u64(which);
        const char* const start = at + _tzcnt_u64(_pdep_u64(uint64_t{1} << index, starts));
        ReadScientificNumber(start - (start[-1] == '-'), textEnd, numbers[index]);
    }
}

bool CanRun() {
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vbmi") &&
           __builtin_cpu_supports("avx512vbmi2") && __builtin_cpu_supports("bmi") &&
           __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt");
}

OZM_AVX512 inline size_t CountLettersOf(__m512i characters) {
    return static_cast<size_t>(_mm_popcnt_u64(_mm512_test_epi8_mask(characters, Fill(0x40))));
}

OZM_AVX512 size_t CountLetters(StringView text) {
    const char* at = text.begin();
    size_t count = 0;
    for (; text.end() - at >= 64; at += 64) count += CountLettersOf(_mm512_loadu_si512(at));
    return count + CountLettersOf(LoadUpTo64(at, static_cast<size_t>(text.end() - at)));
}

OZM_AVX512 void Scan(const char* at, const char* textEnd, PathDataBlock& block, double* numbers) {
    const auto left = static_cast<size_t>(textEnd - at);
    const __m512i characters = LoadUpTo64(at, std::min(left, kPathDataBlockSize));
    const CharacterMasks masks = MaskCharacters(characters);
    const NumberMasks found = StructureBlock(masks, left, block);

    const NumberPlaces places = PlaceNumbers(found);
    const uint64_t isNegative = _pext_u64(masks.minuses << 1 | uint64_t{at[-1] == '-'}, found.starts);
    for (size_t i = 0; i < block.numberCount; i += 8) {
        ConvertEight(characters, places, i, isNegative >> i, numbers + i);
    }
    const uint64_t isLong = _mm512_cmpgt_epi8_mask(_mm512_sub_epi8(places.ends, places.starts), Fill(9));
    const uint64_t longOnes = _bzhi_u64(isLong, static_cast<unsigned>(block.numberCount));
    if (longOnes != 0) ConvertLongNumbers(at, textEnd, found.starts, longOnes, numbers);
}

} // namespace

constinit const PathDataScanner kAVX512PathDataScanner = {CanRun, CountLetters, Scan, 0, 0};

} // namespace ozm

#endif
