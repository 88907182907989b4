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

struct Expectation {
    size_t size;
    bool isExact; ///< A read that gives less has reached the end.
};

/// How much to make room for: the size of a regular file, and one byte more to see that it has not grown.
Expectation ExpectSize(int descriptor) {
    struct stat status;
    if (::fstat(descriptor, &status) != 0) ThrowSystemError();
    // Files that the system makes up when they are read have the size 0.
    if (!S_ISREG(status.st_mode) || status.st_size == 0) return {kSmallestRead, false};
    if (status.st_size > static_cast<off_t>(kMaximumFileSize)) ThrowTooLarge();
    return {static_cast<size_t>(status.st_size) + 1, true};
}

std::string ReadToEnd(int descriptor) {
    const Expectation expectation = ExpectSize(descriptor);
    std::string bytes(expectation.size, '\0');
    size_t used = 0;
    while (true) {
        const ssize_t count = ::read(descriptor, bytes.data() + used, bytes.size() - used);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) ThrowSystemError();
        used += static_cast<size_t>(count);
        if (used > kMaximumFileSize) ThrowTooLarge();
        if (count == 0 || (expectation.isExact && used + 1 == expectation.size)) break;
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
