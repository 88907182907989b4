#pragma once

#include <string>
#include <string_view>

namespace ozm::tool {

/// The text of a file, pipe or device, or of standard input for "-", unpacked if it is compressed. Throws
/// `FileError` if it can't be read, is a folder, a picture or an archive, or has more than `kMaximumFileSize`
/// bytes.
std::string ReadInput(const std::string& path);

/// A file's text, and the bytes that it was unpacked from, which are empty if it is not compressed.
struct PackedInput {
    std::string text, packed;
};

/// Like `ReadInput`, but keeps the bytes of a compressed file.
PackedInput ReadPackedInput(const std::string& path);

/// Like `ReadInput`, but takes PNG files too, and returns their bytes.
std::string ReadDrawingOrPNG(const std::string& path);

/// True for bytes that begin as a PNG file does.
inline bool IsPNG(std::string_view bytes) { return bytes.starts_with("\x89PNG"); }

} // namespace ozm::tool
