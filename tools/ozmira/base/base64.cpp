#include "base/base64.h"

#include <string_view>

namespace ozm::tool {

std::string EncodeBase64(std::span<const uint8_t> bytes) {
    constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (size_t i = 0; i < bytes.size(); i += 3) {
        const size_t count = bytes.size() - i;
        const uint32_t group = uint32_t{bytes[i]} << 16 | (count > 1 ? uint32_t{bytes[i + 1]} << 8 : 0) |
                               (count > 2 ? uint32_t{bytes[i + 2]} : 0);
        text += kAlphabet[group >> 18];
        text += kAlphabet[group >> 12 & 63];
        text += count > 1 ? kAlphabet[group >> 6 & 63] : '=';
        text += count > 2 ? kAlphabet[group & 63] : '=';
    }
    return text;
}

} // namespace ozm::tool
