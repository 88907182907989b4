#include "files/input_file.h"

#include "base/errors.h"
#include "base/text.h"
#include "base/tool_limits.h"
#include "files/file_descriptor.h"

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

struct SizeEstimate {
    size_t size;
    bool isExact; ///< A read that returns less has reached the end of the file.
};

/// How many bytes to read first: the size of a regular file, and one byte more to detect that it has grown.
SizeEstimate EstimateSize(int descriptor) {
    struct stat status;
    if (::fstat(descriptor, &status) != 0) ThrowSystemError();
    // Files whose content the kernel generates, as in /proc, have the size 0.
    if (!S_ISREG(status.st_mode) || status.st_size == 0) return {kSmallestRead, false};
    if (status.st_size > static_cast<off_t>(kMaximumFileSize)) ThrowTooLarge();
    return {static_cast<size_t>(status.st_size) + 1, true};
}

std::string ReadToEnd(int descriptor) {
    const SizeEstimate estimate = EstimateSize(descriptor);
    std::string bytes(estimate.size, '\0');
    size_t used = 0;
    while (true) {
        const ssize_t count = ::read(descriptor, bytes.data() + used, bytes.size() - used);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) ThrowSystemError();
        used += static_cast<size_t>(count);
        if (used > kMaximumFileSize) ThrowTooLarge();
        if (count == 0 || (estimate.isExact && used + 1 == estimate.size)) break;
        if (used == bytes.size()) bytes.resize(2 * used);
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
