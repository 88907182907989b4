#include "files/output_guard.h"

#include "base/errors.h"
#include "base/text.h"
#include "files/file_descriptor.h"
#include "files/gzip.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>

namespace ozm::tool {
namespace {

namespace fs = std::filesystem;

/// Enough bytes of a file to tell its kind.
constexpr size_t kStart = 64;

[[noreturn]] void Refuse(const std::string& path, const std::string& reason) {
    throw FileError("cannot write " + OnOneLine(path) + ": " + reason);
}

[[noreturn]] void RefuseUnreadable(const std::string& path, int errorNumber) {
    Refuse(path, "the file there cannot be read: " + DescribeError(errorNumber) +
                     "; allow reading it, or choose another name");
}

/// The first bytes of a file, up to `count`. Throws `FileError` with `path`, the name of the destination.
std::vector<uint8_t> ReadStart(const Destination& destination, size_t count, const std::string& path) {
    const FileDescriptor file(::open(destination.path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    std::vector<uint8_t> bytes(count);
    size_t used = 0;
    while (file && used < count) {
        const ssize_t read = ::read(file.Get(), bytes.data() + used, count - used);
        if (read < 0 && errno == EINTR) continue;
        if (read < 0) RefuseUnreadable(path, errno);
        if (read == 0) break;
        used += static_cast<size_t>(read);
    }
    if (!file) RefuseUnreadable(path, errno);
    bytes.resize(used);
    return bytes;
}

bool BeginsLike(OutputKind kind, std::span<const uint8_t> bytes) {
    const std::string_view all(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const std::string start =
        InLowerCase(all.substr(std::min(all.find_first_not_of("\xEF\xBB\xBF \t\r\n"), all.size())));
    const bool isPage = start.starts_with("<!doctype html") || start.starts_with("<html");
    switch (kind) {
    case OutputKind::Picture: return all.starts_with("\x89PNG\r\n\x1A\n");
    case OutputKind::Drawing: return IsGzip(all) || (start.starts_with('<') && !isPage);
    case OutputKind::Page: return isPage;
    case OutputKind::Data: return start.starts_with('{') || start.starts_with('[');
    case OutputKind::List: return true;
    }
    return false;
}

std::string_view NameOf(OutputKind kind) {
    switch (kind) {
    case OutputKind::Picture: return "PNG picture";
    case OutputKind::Drawing: return "drawing";
    case OutputKind::Page: return "page";
    case OutputKind::Data: return "JSON file";
    case OutputKind::List: return "list";
    }
    return {};
}

} // namespace

bool IsDrawingName(std::string_view path) {
    return InLowerCase(path).ends_with(".svg") || IsPackedDrawingName(path);
}

bool IsPackedDrawingName(std::string_view path) { return InLowerCase(path).ends_with(".svgz"); }

OutputGuard::OutputGuard(std::span<const std::string> inputs) {
    for (const std::string& input : inputs) {
        struct stat status {};
        if (input != "-" && ::stat(input.c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
            m_inputs.emplace(status.st_dev, status.st_ino);
        }
    }
}

Destination OutputGuard::Examine(const std::string& path, OutputKind kind, size_t bound,
                                 const SameContent& isSame) const {
    using enum Destination::State;
    if (kind != OutputKind::Drawing && IsDrawingName(path)) {
        Refuse(path, "it has the name of a drawing; choose another name");
    }
    Destination destination{Free, path, 0};
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) return destination;
    if (S_ISLNK(status.st_mode)) {
        if (::stat(path.c_str(), &status) != 0) return destination; // a link to nothing is replaced
        std::error_code error;
        if (S_ISREG(status.st_mode)) destination.path = fs::canonical(path, error).string();
        if (error) Refuse(path, error.message());
    }
    if (S_ISDIR(status.st_mode)) Refuse(path, "a folder is there; choose another name");
    if (!S_ISREG(status.st_mode)) {
        destination.state = Device;
        return destination;
    }
    if (m_inputs.contains({status.st_dev, status.st_ino})) {
        Refuse(path, "it is one of the files to read; choose another name");
    }
    destination.mode = status.st_mode & 0777;
    destination.state = Replaceable;
    if (const auto size = static_cast<size_t>(status.st_size); size > 0) {
        const std::vector<uint8_t> bytes = ReadStart(destination, size <= bound ? size : kStart, path);
        if (!BeginsLike(kind, bytes)) {
            Refuse(path, "the file there is no " + std::string(NameOf(kind)) +
                             "; move it away, or write to another place");
        }
        if (size <= bound && isSame(bytes)) {
            destination.state = Same;
            return destination;
        }
    }
    // The superuser may write to every file, but should not either.
    if ((status.st_mode & 0222) == 0 || ::access(destination.path.c_str(), W_OK) != 0) {
        Refuse(path, "the file there is read-only; allow writing to it, for example with chmod u+w");
    }
    return destination;
}

} // namespace ozm::tool
