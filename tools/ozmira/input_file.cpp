#include "input_file.h"

#include "errors.h"
#include "file_descriptor.h"
#include "text.h"
#include "tool_limits.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace ozm::tool {
namespace {

constexpr size_t kSmallestRead = size_t{64} << 10;

[[noreturn]] void ThrowSystemError() {
    switch (errno) {
    case ENOENT: throw FileError("no such file; check the name");
    case EISDIR: throw FileError("a folder; name the files in it (render walks folders by itself)");
    default: throw FileError("cannot be read: " + DescribeError(errno));
    }
}

[[noreturn]] void ThrowTooLarge() {
    throw FileError("larger than " + FormatCount(kMaximumFileSize >> 20) +
                    " MB, the most that is read; split the drawing");
}

/// How much to make room for: the size of a regular file and one byte more, so that its end shows at once.
size_t ExpectedSize(int descriptor) {
    struct stat status;
    if (::fstat(descriptor, &status) != 0) ThrowSystemError();
    if (!S_ISREG(status.st_mode)) return kSmallestRead;
    if (status.st_size > static_cast<off_t>(kMaximumFileSize)) ThrowTooLarge();
    return static_cast<size_t>(status.st_size) + 1;
}

std::string ReadToEnd(int descriptor) {
    std::string bytes(ExpectedSize(descriptor), '\0');
    size_t used = 0;
    while (true) {
        const ssize_t count = ::read(descriptor, bytes.data() + used, bytes.size() - used);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) ThrowSystemError();
        if (count == 0) break;
        used += static_cast<size_t>(count);
        if (used > kMaximumFileSize) ThrowTooLarge();
        if (used == bytes.size()) bytes.resize(std::max(2 * used, kSmallestRead));
    }
    bytes.resize(used);
    return bytes;
}

} // namespace

std::string ReadInput(const std::string& path) {
    if (path == "-") return ReadToEnd(STDIN_FILENO);
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file) ThrowSystemError();
    return ReadToEnd(file.Get());
}

} // namespace ozm::tool
