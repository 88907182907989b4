#pragma once

#include <cstdint>
#include <string_view>

namespace ozm {

/// The letters of the path commands whose coordinates are relative to the current point.
inline constexpr std::string_view relativeCommands = "mzlhvcsqta";

/// True for the letters of the alphabet, in either case.
constexpr bool IsLetter(char c) { return static_cast<unsigned char>((c | 0x20) - 'a') < 26; }

/// True for the letters of `relativeCommands`, in either case.
constexpr bool IsCommandLetter(char c) {
    constexpr uint32_t kCommands = [] {
        uint32_t bits = 0;
        for (const char letter : relativeCommands) bits |= uint32_t{1} << (letter - 'a');
        return bits;
    }();
    return IsLetter(c) && ((kCommands >> ((c | 0x20) - 'a')) & 1) != 0;
}

} // namespace ozm
