#include "path_data/block_scanner.h"

#if defined(__x86_64__)

#include "numbers/list_number_reader.h"
#include "path_data/block_masks.h"
#include "path_data/command_letters.h"

#include <algorithm>
#include <array>
#include <immintrin.h>

// What these functions use is asked for before the first of them is called.
#define OZM_AVX2 [[gnu::target("avx2,bmi,bmi2,popcnt")]]

namespace ozm {
namespace {

/// A character's class is the bit that the classes of its two halves have in common (Langdale and Lemire,
/// "Parsing Gigabytes of JSON per Second", 2019).
enum CharacterClass : uint8_t {
    kDigit = 0x80,
    kPoint = 0x40,
    kMinus = 0x20,
    kComma = 0x10,
    kUpperRowLetter = 0x08, ///< "PQRST...", in both cases.
    kLowerRowLetter = 0x04, ///< "ABCDE..."
    kSpace = 0x02,
    kControl = 0x01, ///< Tab to carriage return.
};

constexpr auto kClassesByLowHalf = [] {
    std::array<uint8_t, 16> classes{};
    const auto add = [&](const char* characters, CharacterClass ofClass) {
        for (; *characters != '\0'; ++characters) classes[static_cast<size_t>(*characters) & 15] |= ofClass;
    };
    add("0123456789", kDigit);
    add(".", kPoint);
    add("-", kMinus);
    add(",", kComma);
    add("qstvz", kUpperRowLetter);
    add("achlm", kLowerRowLetter);
    add(" ", kSpace);
    add("\t\n\v\f\r", kControl);
    return classes;
}();

constexpr auto kClassesByHighHalf = [] {
    std::array<uint8_t, 16> classes{};
    classes[0] = kControl;
    classes[2] = kPoint | kMinus | kComma | kSpace;
    classes[3] = kDigit;
    classes[4] = classes[6] = kLowerRowLetter;
    classes[5] = classes[7] = kUpperRowLetter;
    return classes;
}();

constexpr bool ClassifiesLetters() {
    for (size_t c = 0; c < 128; ++c) {
        const auto ofClass = static_cast<uint8_t>(kClassesByLowHalf[c & 15] & kClassesByHighHalf[c >> 4]);
        const bool isLetter = (ofClass & (kUpperRowLetter | kLowerRowLetter)) != 0;
        if (isLetter != IsCommandLetter(static_cast<char>(c))) return false;
    }
    return true;
}
static_assert(ClassifiesLetters());

OZM_AVX2 inline __m256i LoadTable(const std::array<uint8_t, 16>& table) {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(table.data())));
}

OZM_AVX2 inline __m256i ClassifyCharacters(const char* text) {
    const __m256i characters = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text));
    const __m256i highHalves = _mm256_and_si256(_mm256_srli_epi16(characters, 4), _mm256_set1_epi8(15));
    // A low half with the character's sign bit finds nothing.
    return _mm256_and_si256(_mm256_shuffle_epi8(LoadTable(kClassesByLowHalf), characters),
                            _mm256_shuffle_epi8(LoadTable(kClassesByHighHalf), highHalves));
}

/// Joins the sign bits of the classes of 32 characters and of 32 that begin `distance`, 0 to 32, behind the
/// first.
OZM_AVX2 inline uint64_t JoinSigns(__m256i first, __m256i second, size_t distance) {
    return static_cast<uint32_t>(_mm256_movemask_epi8(first)) |
           static_cast<uint64_t>(static_cast<uint32_t>(_mm256_movemask_epi8(second))) << distance;
}

/// Of `size` characters, 32 to 64.
OZM_AVX2 inline CharacterMasks MaskCharacters(const char* text, size_t size) {
    const size_t distance = size - 32;
    const __m256i a = ClassifyCharacters(text), b = ClassifyCharacters(text + distance);
    const __m256i none = _mm256_setzero_si256();
    CharacterMasks masks;
    masks.digits = JoinSigns(a, b, distance);
    masks.points = JoinSigns(_mm256_slli_epi16(a, 1), _mm256_slli_epi16(b, 1), distance);
    masks.minuses = JoinSigns(_mm256_slli_epi16(a, 2), _mm256_slli_epi16(b, 2), distance);
    masks.commas = JoinSigns(_mm256_slli_epi16(a, 3), _mm256_slli_epi16(b, 3), distance);
    masks.letters = JoinSigns(_mm256_or_si256(_mm256_slli_epi16(a, 4), _mm256_slli_epi16(a, 5)),
                              _mm256_or_si256(_mm256_slli_epi16(b, 4), _mm256_slli_epi16(b, 5)), distance);
    masks.others = JoinSigns(_mm256_cmpeq_epi8(a, none), _mm256_cmpeq_epi8(b, none), distance);
    return masks;
}

/// Of the last `size` characters of a text, 1 to 31.
OZM_AVX2 inline CharacterMasks MaskLastCharacters(const char* end, size_t size) {
    const size_t before = 32 - size;
    const CharacterMasks masks = MaskCharacters(end - 32, 32);
    return {masks.digits >> before, masks.points >> before,  masks.minuses >> before,
            masks.commas >> before, masks.letters >> before, masks.others >> before};
}

/// How a number of up to seven characters is converted.
struct NumberForm {
    /// Which of eight characters, the first of which is no part of the number, goes into which byte, so that
    /// the digits end in the last one, without a point. The lowest byte is the first; 0x80 makes it 0.
    uint64_t shuffle;
    double divisor; ///< For the digits behind the point.
};

/// By the number's length and by its digits before the point, which are the length where there is none.
constexpr auto kNumberForms = [] {
    std::array<std::array<NumberForm, 8>, 8> forms{};
    for (size_t length = 0; length <= 7; ++length) {
        for (size_t integerDigits = 0; integerDigits <= length; ++integerDigits) {
            NumberForm& form = forms[length][integerDigits];
            form = {0x8080808080808080, 1};
            for (size_t from = 0; from < length; ++from) {
                if (from != integerDigits) form.shuffle = form.shuffle >> 8 | uint64_t{from + 1} << 56;
                if (from > integerDigits) form.divisor *= 10;
            }
        }
    }
    return forms;
}();

/// Where one number stands, without its sign.
struct NumberPlace {
    size_t start, length;
    size_t integerDigits; ///< The length where there is no point.
};

/// The numbers of a block, one after another; empty ones at its beginning when there are no more.
struct NumberPlaces {
    uint64_t starts, ends, points;

    OZM_AVX2 NumberPlace Next() {
        const size_t start = _tzcnt_u64(starts);
        NumberPlace place;
        place.start = start % 64;
        place.length = _tzcnt_u64(ends) - start;
        place.integerDigits = _tzcnt_u64(points >> place.start | uint64_t{1} << place.length % 64);
        starts = _blsr_u64(starts);
        ends = _blsr_u64(ends);
        return place;
    }
};

OZM_AVX2 inline __m128i JoinEights(uint64_t a, uint64_t b) {
    return _mm_set_epi64x(static_cast<int64_t>(b), static_cast<int64_t>(a));
}

/// Of numbers of seven characters at most: adds up pairs of digits, then pairs of pairs.
OZM_AVX2 inline void ConvertTwo(const char* text, const NumberPlace& a, const NumberPlace& b,
                                double* numbers) {
    const NumberForm& formA = kNumberForms[a.length][a.integerDigits];
    const NumberForm& formB = kNumberForms[b.length][b.integerDigits];
    const __m128i characters =
        JoinEights(LoadEightCharacters(text + a.start - 1), LoadEightCharacters(text + b.start - 1));
    const __m128i shuffle =
        _mm_add_epi8(JoinEights(formA.shuffle, formB.shuffle), JoinEights(0, 0x0808080808080808));
    // The bits of a digit's value; the first character of each eight is a minus or something else.
    const __m128i digits = _mm_shuffle_epi8(_mm_and_si128(characters, _mm_set1_epi8(15)), shuffle);
    const __m128i signs = _mm_slli_epi64(_mm_cmpeq_epi8(characters, _mm_set1_epi8('-')), 63);
    const __m128i twos = _mm_maddubs_epi16(digits, _mm_set1_epi16(10 | 1 << 8));
    const __m128i fours = _mm_madd_epi16(twos, _mm_set1_epi32(100 | 1 << 16));
    const __m128i eights = _mm_madd_epi16(_mm_packus_epi32(fours, fours), _mm_set1_epi32(10000 | 1 << 16));
    // Both are exact, so that the division rounds once.
    const __m128d quotients = _mm_div_pd(_mm_cvtepi32_pd(eights), _mm_set_pd(formB.divisor, formA.divisor));
    _mm_storeu_pd(numbers, _mm_xor_pd(quotients, _mm_castsi128_pd(signs)));
}

/// Of numbers of any length. Never inlined, so that the common case need not save its vectors.
OZM_AVX2 [[gnu::noinline]] void ConvertOneByOne(const char* text, NumberPlaces places, double* numbers) {
    while (places.starts != 0) {
        const NumberPlace place = places.Next();
        const char* const start = text + place.start;
        ReadScientificNumber(start - (start[-1] == '-'), start + place.length, *numbers++);
    }
}

OZM_AVX2 inline void ConvertNumbers(const char* text, NumberPlaces places, double* numbers) {
    while (places.starts != 0) {
        const NumberPlaces rest = places;
        const NumberPlace a = places.Next(), b = places.Next();
        if ((a.length | b.length) > 7) return ConvertOneByOne(text, rest, numbers);
        ConvertTwo(text, a, b, numbers);
        numbers += 2;
    }
}

bool CanRun() {
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
           __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt");
}

OZM_AVX2 void Scan(const char* at, const char* textEnd, PathDataBlock& block, double* numbers) {
    const size_t left = static_cast<size_t>(textEnd - at);
    const size_t size = std::min(left, kPathDataBlockSize);
    const CharacterMasks masks = size < 32 ? MaskLastCharacters(textEnd, size) : MaskCharacters(at, size);
    const NumberMasks found = StructureBlock(masks, left, block);
    ConvertNumbers(at, {found.starts, _bzhi_u64(found.ends, found.next + 1), masks.points}, numbers);
}

} // namespace

constinit const PathDataScanner kAVX2PathDataScanner = {CanRun, CountPathDataLetters, Scan, 32,
                                                        kMostPathDataOverrun};

} // namespace ozm

#endif
