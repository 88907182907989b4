// Compressed drawings: files in the gzip format (RFC 1952).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ozm::tool {

/// Whether bytes begin as a gzip file does.
bool IsGzip(std::string_view bytes);

/// The content of a gzip file, with that of all its members. Throws `FileError` if the file is damaged or its
/// content has more than `limit` bytes.
std::string UnpackGzip(std::string_view bytes, size_t limit);

/// A gzip file that holds a text.
std::vector<uint8_t> PackGzip(std::string_view text);

} // namespace ozm::tool
