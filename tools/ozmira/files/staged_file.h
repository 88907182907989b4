#pragma once

#include "files/temporary_files.h"

#include <cstdint>
#include <span>
#include <string>

namespace ozm::tool {

/// A file that appears whole or not at all: written under a temporary name beside its place, then renamed.
/// What can't be replaced by a rename (a device, a pipe) is written directly. All functions throw
/// `FileError`.
class StagedFile {
public:
    /// Writes the bytes, making missing folders on the way.
    StagedFile(TemporaryFiles& temporaryFiles, const std::string& path, std::span<const uint8_t> bytes);
    StagedFile(StagedFile&& other) noexcept;
    StagedFile& operator=(StagedFile&&) = delete;
    /// Removes what was not put in place.
    ~StagedFile();

    /// Puts the file in its place.
    void Commit();

private:
    TemporaryFiles& m_temporaryFiles;
    std::string m_path;      ///< Where the bytes go; links are resolved.
    std::string m_temporary; ///< Where they are until then; empty once they are in place.
};

} // namespace ozm::tool
