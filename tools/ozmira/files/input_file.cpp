#include "files/input_file.h"

#include "base/errors.h"
#include "base/text.h"
#include "base/tool_limits.h"
#include "files/file_descriptor.h"
#include "files/gzip.h"

#include <cerrno>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace ozm::tool {
namespace {

constexpr size_t kSmallestRead = size_t{64} << 10;

[[noreturn]] void ThrowSystemError() {
    switch (errno) {
    case ENOENT: throw FileError("no such file; check the name");
    case EISDIR: throw FileError("a folder; name a file in it");
    case EACCES:
    case EPERM: throw FileError("cannot be read: " + DescribeError(errno) + "; allow reading it");
    default:
        throw FileError("cannot be read: " + DescribeError(errno) + "; name another file, or copy it anew");
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

/// The name of the format of a file that is certainly no drawing; empty for any other.
std::string_view RecogniseForeignFormat(std::string_view bytes) {
    constexpr std::pair<std::string_view, std::string_view> kFormats[] = {
        {"\x89PNG", "PNG picture"}, {"\xFF\xD8\xFF", "JPEG picture"}, {"GIF8", "GIF picture"},
        {"RIFF", "WebP picture"},   {"%PDF", "PDF document"},         {"PK\x03\x04", "ZIP archive"},
    };
    for (const auto& [start, name] : kFormats) {
        if (bytes.starts_with(start)) return name;
    }
    return {};
}

std::string Unpacked(std::string bytes) {
    if (IsGzip(bytes)) bytes = UnpackGzip(bytes, kMaximumFileSize);
    if (const std::string_view format = RecogniseForeignFormat(bytes); !format.empty()) {
        throw FileError("a " + std::string(format) + ", not a drawing; name an SVG file");
    }
    return bytes;
}

std::string ReadBytes(const std::string& path) {
    if (path == "-") return ReadToEnd(STDIN_FILENO);
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file) ThrowSystemError();
    return ReadToEnd(file.Get());
}

} // namespace

std::string ReadInput(const std::string& path) { return Unpacked(ReadBytes(path)); }

PackedInput ReadPackedInput(const std::string& path) {
    std::string bytes = ReadBytes(path);
    if (!IsGzip(bytes)) return {Unpacked(std::move(bytes)), {}};
    return {Unpacked(bytes), std::move(bytes)};
}

std::string ReadDrawingOrPNG(const std::string& path) {
    std::string bytes = ReadBytes(path);
    return IsPNG(bytes) ? bytes : Unpacked(std::move(bytes));
}

} // namespace ozm::tool
