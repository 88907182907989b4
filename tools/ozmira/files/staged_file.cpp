#include "files/staged_file.h"

#include "base/errors.h"
#include "base/text.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <tuple>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace ozm::tool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void ThrowUnwritable(const std::string& path, int errorNumber) {
    throw FileError("cannot write " + OnOneLine(path) + ": " + DescribeError(errorNumber));
}

void WriteBytes(FileDescriptor& file, const std::string& path, std::span<const uint8_t> bytes) {
    if (!WriteAll(file.Get(), bytes) || !file.Close()) ThrowUnwritable(path, errno);
}

} // namespace

StagedFile::StagedFile(TemporaryFiles& temporaryFiles, const std::string& path,
                       std::span<const uint8_t> bytes)
    : m_temporaryFiles(temporaryFiles), m_path(path) {
    struct stat existing {};
    const bool exists = ::stat(path.c_str(), &existing) == 0;
    if (exists && S_ISDIR(existing.st_mode)) ThrowUnwritable(path, EISDIR);
    if (exists && !S_ISREG(existing.st_mode)) {
        FileDescriptor device(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
        if (!device) ThrowUnwritable(path, errno);
        WriteBytes(device, path, bytes);
        return;
    }
    std::error_code error;
    if (exists) m_path = fs::canonical(path, error).string();
    if (error) ThrowUnwritable(path, error.value());

    const std::string folder = fs::path(m_path).parent_path().string();
    auto [file, temporary] = m_temporaryFiles.Create(folder);
    if (!file && errno == ENOENT && !folder.empty()) {
        fs::create_directories(folder, error);
        if (error) ThrowUnwritable(path, error.value());
        std::tie(file, temporary) = m_temporaryFiles.Create(folder);
    }
    if (!file) ThrowUnwritable(path, errno);
    m_temporary = std::move(temporary);
    try {
        if (exists && ::fchmod(file.Get(), existing.st_mode & 0777) != 0) ThrowUnwritable(path, errno);
        WriteBytes(file, path, bytes);
    } catch (...) {
        m_temporaryFiles.Remove(m_temporary);
        throw;
    }
}

StagedFile::StagedFile(StagedFile&& other) noexcept
    : m_temporaryFiles(other.m_temporaryFiles), m_path(std::move(other.m_path)),
      m_temporary(std::exchange(other.m_temporary, {})) {}

StagedFile::~StagedFile() {
    if (!m_temporary.empty()) m_temporaryFiles.Remove(m_temporary);
}

void StagedFile::Commit() {
    if (m_temporary.empty()) return;
    if (!m_temporaryFiles.Finish(m_temporary, m_path)) ThrowUnwritable(m_path, errno);
    m_temporary.clear();
}

} // namespace ozm::tool
