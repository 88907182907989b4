#pragma once

#include "files/file_descriptor.h"

#include <atomic>
#include <csignal>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <utility>

namespace ozm::tool {

/// The temporary files of the process. When a signal asks the process to end (SIGINT, SIGTERM, SIGHUP), all
/// of them are removed first. Until it is destroyed, the object blocks these signals in the thread that
/// creates it, and hence in threads started later. A thread of its own waits for them, because unlike a
/// signal handler it may take locks. Create one object at a time, before other threads; its functions may be
/// called from any thread.
class TemporaryFiles {
public:
    /// Throws `std::runtime_error` if its thread can't be started.
    TemporaryFiles();
    /// Restores the signal mask of the thread that created the object, on which it must run.
    ~TemporaryFiles();
    TemporaryFiles(const TemporaryFiles&) = delete;
    TemporaryFiles& operator=(const TemporaryFiles&) = delete;

    /// Creates an empty file in a folder ("" is the current one). Returns no file and sets errno on failure.
    std::pair<FileDescriptor, std::string> Create(const std::string& folder);
    /// Renames a file to its final path, replacing an existing file; it is then no longer temporary. Returns
    /// false and sets errno on failure.
    bool Finish(const std::string& path, const std::string& finalPath);
    /// Deletes a file.
    void Remove(const std::string& path);

private:
    void AwaitSignal();

    std::mutex m_mutex;
    std::set<std::string> m_paths;
    const pid_t m_processId = ::getpid();
    uint64_t m_count = 0;
    sigset_t m_awaitedSignals;
    sigset_t m_previousMask;
    std::atomic<bool> m_stopping = false;
    std::thread m_thread;
};

} // namespace ozm::tool
