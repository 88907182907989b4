#include "path_data/block_scanner.h"

#include "numbers/list_number_reader.h"

#include <algorithm>
#include <array>

namespace ozm {

std::span<const PathDataScanner* const> PathDataScanners() {
#if defined(__x86_64__)
    static const auto scanners = [] {
        struct {
            std::array<const PathDataScanner*, 2> list{};
            size_t count = 0;
        } found;
        for (const PathDataScanner* const scanner : {&kAVX512PathDataScanner, &kAVX2PathDataScanner}) {
            if (scanner->canRun()) found.list[found.count++] = scanner;
        }
        return found;
    }();
    return {scanners.list.data(), scanners.count};
#else
    return {};
#endif
}

size_t CountPathDataLetters(StringView text) {
    constexpr uint64_t kEveryByte = 0x0101010101010101, kEverySecondByte = 0x00FF00FF00FF00FF;
    constexpr uint64_t kEveryFourthByte = 0x0001000100010001;
    const char* at = text.begin();
    size_t count = 0;
    while (text.end() - at >= 8) {
        // Eight sums, each of which fits into its byte.
        const auto blocks = std::min<size_t>(static_cast<size_t>(text.end() - at) / 8, 255);
        const char* const end = at + 8 * blocks;
        uint64_t sums = 0;
        for (; at != end; at += 8) sums += (LoadEightCharacters(at) >> 6) & kEveryByte;
        sums = (sums & kEverySecondByte) + ((sums >> 8) & kEverySecondByte);
        count += (sums * kEveryFourthByte) >> 48;
    }
    for (; at != text.end(); ++at) count += (*at >> 6) & 1;
    return count;
}

} // namespace ozm
