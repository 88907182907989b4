#pragma once

#include <string>

namespace ozm::tool {

/// The bytes of a file, pipe or device, or of standard input for "-". Throws `FileError` if it can't be read,
/// is a folder, or has more than `kMaximumFileSize` bytes.
std::string ReadInput(const std::string& path);

} // namespace ozm::tool
