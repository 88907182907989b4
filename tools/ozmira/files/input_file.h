#pragma once

#include <string>

namespace ozm::tool {

/// The bytes of a file, pipe or device, or of standard input for "-". Throws `FileError` when it can't be
/// read, is a folder, or holds more than `kMaximumFileSize` bytes.
std::string ReadInput(const std::string& path);

} // namespace ozm::tool
