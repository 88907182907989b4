#pragma once

#include "files/file_descriptor.h"

#include <atomic>
#include <csignal>
#include <filesystem>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <utility>

namespace ozm::tool {

/// The temporary files of the process, and the folders that are made for them. When a signal asks the process
/// to end (SIGINT, SIGTERM, SIGHUP), all files are removed first, and the folders that are then empty. Until
/// it is destroyed, the object blocks these signals in the thread that creates it, and hence in threads
/// started later. A thread of its own waits for them, because unlike a signal handler it may take locks.
/// Create one object at a time, before other threads; its functions may be called from any thread.
class TemporaryFiles {
public:
    /// Once the files are removed, `onSignal` is called before the process ends, on the thread that waits. It
    /// must not throw. Throws `std::runtime_error` if that thread can't be started.
    explicit TemporaryFiles(std::function<void()> onSignal = {});
    /// Restores the signal mask of the thread that created the object, on which it must run.
    ~TemporaryFiles();
    TemporaryFiles(const TemporaryFiles&) = delete;
    TemporaryFiles& operator=(const TemporaryFiles&) = delete;

    /// Creates an empty file in a folder ("" is the current one), which is made if it is missing. Returns no
    /// file and sets errno on failure.
    std::pair<FileDescriptor, std::string> Create(const std::string& folder);
    /// Renames a file to its final path, replacing an existing file; it is then no longer temporary. Returns
    /// false and sets errno on failure.
    bool Finish(const std::string& path, const std::string& finalPath);
    /// Deletes a file, and the folders that were made for it and are empty.
    void Remove(const std::string& path);
    /// Deletes the temporary files that a run which was killed has left in a folder: those of processes that
    /// this machine no longer runs, and those of other machines once they are a day old.
    void Sweep(const std::string& folder) const;

private:
    void AwaitSignal();
    /// Makes a folder and those around it. Returns 0, or what `errno` says of a failure.
    int MakeFolder(const std::string& folder);
    /// Removes a folder and those around it as long as they were made by `MakeFolder` and are empty.
    void RemoveEmptyFolders(std::filesystem::path folder);

    std::function<void()> m_onSignal;
    std::mutex m_mutex;
    std::set<std::string> m_paths;
    std::set<std::string> m_madeFolders;
    const std::string m_machinePrefix; ///< How the names of all processes on this machine begin.
    uint64_t m_count = 0;
    sigset_t m_awaitedSignals;
    sigset_t m_previousMask;
    std::atomic<bool> m_stopping = false;
    std::thread m_thread;
};

} // namespace ozm::tool
