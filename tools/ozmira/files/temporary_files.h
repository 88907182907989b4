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

/// The unfinished files of the process. A signal that asks the process to end (SIGINT, SIGTERM, SIGHUP)
/// removes them all first. Such signals are blocked in the thread that makes the object and in those started
/// later, and awaited in a thread of the object's own, which may take locks as a signal handler may not. One
/// object at a time, made before other threads; its functions may be called from all of them.
class TemporaryFiles {
public:
    TemporaryFiles();
    ~TemporaryFiles();
    TemporaryFiles(const TemporaryFiles&) = delete;
    TemporaryFiles& operator=(const TemporaryFiles&) = delete;

    /// Makes a new, empty file in a folder ("" is the current one). No file, with errno set, on failure.
    std::pair<FileDescriptor, std::string> Create(const std::string& folder);
    /// Gives a file its final name, replacing what had it; it is not temporary any more. False, with errno
    /// set, on failure.
    bool Finish(const std::string& path, const std::string& finalPath);
    /// Removes a file.
    void Remove(const std::string& path);

private:
    void AwaitSignal();

    std::mutex m_mutex;
    std::set<std::string> m_paths;
    const pid_t m_processId = ::getpid();
    uint64_t m_count = 0;
    sigset_t m_awaited;
    sigset_t m_maskBefore;
    std::atomic<bool> m_stopping = false;
    std::thread m_thread;
};

} // namespace ozm::tool
