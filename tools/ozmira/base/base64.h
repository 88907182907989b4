#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace ozm::tool {

/// The bytes in Base64 with padding (RFC 4648, section 4).
std::string EncodeBase64(std::span<const uint8_t> bytes);

} // namespace ozm::tool
