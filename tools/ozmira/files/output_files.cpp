#include "files/output_files.h"

#include "base/errors.h"
#include "base/text.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace ozm::tool {
namespace {

namespace fs = std::filesystem;

/// Whether a failure is one of the disk, which every further output would meet.
bool IsOfDisk(int errorNumber) {
    return errorNumber == ENOSPC || errorNumber == EDQUOT || errorNumber == EIO;
}

bool IsOfFolder(int errorNumber) {
    return errorNumber == EACCES || errorNumber == EPERM || errorNumber == EROFS;
}

std::string_view RemedyFor(int errorNumber) {
    switch (errorNumber) {
    case ENOSPC:
    case EDQUOT: return "free some space, or write to another place";
    case EACCES:
    case EPERM: return "allow writing there, or write to another place";
    case EFBIG: return "allow larger files (ulimit -f)";
    case ENAMETOOLONG: return "choose a shorter name";
    case ENOTDIR: return "a file is where its folder would be; choose another name";
    default: return "write to another place";
    }
}

[[noreturn]] void ThrowUnwritable(const std::string& path, int errorNumber, bool concernsAll) {
    const std::string problem = "cannot write " + OnOneLine(path) + ": " + DescribeError(errorNumber) + "; " +
                                std::string(RemedyFor(errorNumber));
    if (concernsAll) throw DestinationError(problem);
    throw FileError(problem);
}

[[noreturn]] void ThrowUnwritable(const std::string& path, int errorNumber) {
    ThrowUnwritable(path, errorNumber, IsOfDisk(errorNumber));
}

/// The device and number of the folder that is there, or of the nearest one around it.
std::pair<dev_t, ino_t> ExistingFolder(fs::path folder) {
    struct stat status {};
    while (!folder.empty() && ::stat(folder.c_str(), &status) != 0 && folder.has_relative_path())
        folder = folder.parent_path();
    if (folder.empty()) ::stat(".", &status);
    return {status.st_dev, status.st_ino};
}

void WriteBytes(FileDescriptor& file, const std::string& path, std::span<const uint8_t> bytes) {
    if (!WriteAll(file.Get(), bytes) || !file.Close()) ThrowUnwritable(path, errno);
}

} // namespace

StagedFile::StagedFile(StagedFile&& other) noexcept
    : m_files(other.m_files), m_destination(std::move(other.m_destination)),
      m_temporary(std::exchange(other.m_temporary, {})) {}

StagedFile::~StagedFile() {
    if (!m_temporary.empty()) m_files.m_temporaryFiles.Remove(m_temporary);
}

void StagedFile::Commit() {
    if (!m_temporary.empty()) {
        if (!m_files.m_temporaryFiles.Finish(m_temporary, m_destination.path)) {
            ThrowUnwritable(m_destination.path, errno);
        }
        m_temporary.clear();
    }
    ++(IsUnchanged() ? m_files.m_unchangedCount : m_files.m_writtenCount);
}

OutputFiles::OutputFiles(std::span<const std::string> inputs, bool isDryRun, std::function<void()> onSignal,
                         std::vector<std::string> folders)
    : m_guard(inputs), m_isDryRun(isDryRun), m_folders(std::move(folders)),
      m_temporaryFiles(std::move(onSignal)) {}

StagedFile OutputFiles::Stage(const std::string& path, std::span<const uint8_t> bytes, OutputKind kind) {
    const auto isSame = [&](std::span<const uint8_t> file) {
        return std::equal(file.begin(), file.end(), bytes.begin(), bytes.end());
    };
    return Stage(path, {bytes.size(), isSame, [&] { return bytes; }}, kind);
}

StagedFile OutputFiles::Stage(const std::string& path, const LazyOutput& output, OutputKind kind) {
    StagedFile file(*this, m_guard.Examine(path, kind, output.bound, output.isSame));
    if (m_isDryRun || file.IsUnchanged()) return file;
    if (file.m_destination.state == Destination::State::Device) {
        FileDescriptor device(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
        if (!device) ThrowUnwritable(path, errno);
        WriteBytes(device, path, output.make());
    } else {
        WriteTemporary(file, path, output.make());
    }
    return file;
}

void OutputFiles::Write(const std::string& path, std::span<const uint8_t> bytes, OutputKind kind) {
    Stage(path, bytes, kind).Commit();
}

void OutputFiles::WriteTemporary(StagedFile& staged, const std::string& path,
                                 std::span<const uint8_t> bytes) {
    const std::string folder = fs::path(staged.m_destination.path).parent_path().string();
    SweepOnce(folder);
    auto [file, temporary] = m_temporaryFiles.Create(folder);
    if (!file) ThrowUncreatable(path, folder, errno);
    staged.m_temporary = std::move(temporary);
    const bool replaces = staged.m_destination.state == Destination::State::Replaceable;
    if (replaces && ::fchmod(file.Get(), staged.m_destination.mode) != 0) ThrowUnwritable(path, errno);
    WriteBytes(file, path, bytes);
}

void OutputFiles::ThrowUncreatable(const std::string& path, const std::string& folder, int errorNumber) {
    const auto meetsTheSame = [denied = ExistingFolder(folder)](const std::string& other) {
        return ExistingFolder(other) == denied;
    };
    ThrowUnwritable(path, errorNumber,
                    IsOfDisk(errorNumber) || (IsOfFolder(errorNumber) &&
                                              std::all_of(m_folders.begin(), m_folders.end(), meetsTheSame)));
}

void OutputFiles::SweepOnce(const std::string& folder) {
    {
        const std::lock_guard lock(m_sweptMutex);
        if (!m_swept.insert(folder).second) return;
    }
    m_temporaryFiles.Sweep(folder);
}

} // namespace ozm::tool
