#pragma once

#include "files/temporary_files.h"

#include <cstdint>
#include <span>
#include <string>

namespace ozm::tool {

/// A file that appears complete or not at all: it is written under a temporary name in its final folder, then
/// renamed. Devices and pipes, which a rename can't replace, are written directly. All functions throw
/// `FileError`.
class StagedFile {
public:
    /// Writes the bytes to a temporary file. Creates missing folders.
    StagedFile(TemporaryFiles& temporaryFiles, const std::string& path, std::span<const uint8_t> bytes);
    StagedFile(StagedFile&& other) noexcept;
    StagedFile& operator=(StagedFile&&) = delete;
    /// Removes the temporary file unless it was committed.
    ~StagedFile();

    /// Moves the file to its final path.
    void Commit();

private:
    TemporaryFiles& m_temporaryFiles;
    std::string m_path;      ///< The final path, with links resolved.
    std::string m_temporary; ///< The temporary path; empty once the file is committed.
};

} // namespace ozm::tool
