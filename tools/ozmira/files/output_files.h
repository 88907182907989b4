#pragma once

#include "base/lazy_output.h"
#include "files/output_guard.h"
#include "files/temporary_files.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <span>
#include <string>
#include <unordered_set>
#include <vector>

namespace ozm::tool {

class OutputFiles;

/// An output that is ready: complete under a temporary name in its final folder, from where it is renamed.
/// Nothing is pending if the same stands there already, for a device, and in a dry run.
class StagedFile {
public:
    StagedFile(StagedFile&& other) noexcept;
    StagedFile& operator=(StagedFile&&) = delete;
    /// Removes the temporary file unless it was committed.
    ~StagedFile();

    /// True if the final path holds the same already.
    bool IsUnchanged() const { return m_destination.state == Destination::State::Same; }
    /// Moves the file to its final path, and counts it. Throws `FileError`. Call it once.
    void Commit();

private:
    friend class OutputFiles;
    StagedFile(OutputFiles& files, Destination destination)
        : m_files(files), m_destination(std::move(destination)) {}

    OutputFiles& m_files;
    Destination m_destination;
    std::string m_temporary; ///< The temporary path; empty if nothing is pending.
};

/// The files that a run writes. Each appears complete or not at all, and one that holds the same already is
/// left alone, with its times. What may be replaced, `OutputGuard` says. Devices and pipes, which a rename
/// can't replace, are written directly. Missing folders are made, and what a killed run left in a folder is
/// deleted. May be used by several threads at once.
class OutputFiles {
public:
    /// None of the inputs is ever replaced. In a dry run everything is examined and counted, and nothing is
    /// written. `onSignal` is called before a signal ends the process, on a thread of its own. `folders` are
    /// those that outputs go to.
    explicit OutputFiles(std::span<const std::string> inputs, bool isDryRun = false,
                         std::function<void()> onSignal = {}, std::vector<std::string> folders = {});

    /// Writes an output under a temporary name. Throws `FileError`, or `DestinationError` if every other
    /// output would fail as well: the disk is full, or nothing may be written to any of the folders, because
    /// they are one or would have to be made in one. The object must outlive the result.
    StagedFile Stage(const std::string& path, std::span<const uint8_t> bytes, OutputKind kind);
    /// The same for an output that is made only if it has to be written.
    StagedFile Stage(const std::string& path, const LazyOutput& output, OutputKind kind);
    /// Writes an output: `Stage` and `Commit` in one.
    void Write(const std::string& path, std::span<const uint8_t> bytes, OutputKind kind);

    /// Number of outputs that were, or in a dry run would be, written.
    size_t WrittenCount() const { return m_writtenCount; }
    /// Number of outputs that were left alone, because the same stood there.
    size_t UnchangedCount() const { return m_unchangedCount; }

private:
    friend class StagedFile;
    void WriteTemporary(StagedFile& file, const std::string& path, std::span<const uint8_t> bytes);
    /// Throws because no file could be created for an output.
    [[noreturn]] void ThrowUncreatable(const std::string& path, const std::string& folder, int errorNumber);
    void SweepOnce(const std::string& folder);

    const OutputGuard m_guard;
    const bool m_isDryRun;
    const std::vector<std::string> m_folders;
    std::atomic<size_t> m_writtenCount = 0, m_unchangedCount = 0;
    std::mutex m_sweptMutex;
    std::unordered_set<std::string> m_swept; ///< The folders that were swept.
    TemporaryFiles m_temporaryFiles;
};

} // namespace ozm::tool
