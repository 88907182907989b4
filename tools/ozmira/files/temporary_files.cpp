#include "files/temporary_files.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

namespace ozm::tool {
namespace {

constexpr std::array kTerminationSignals = {SIGINT, SIGTERM, SIGHUP};

/// A signal that the parent process has made the tool ignore, as nohup does, stays ignored.
bool IsIgnored(int signal) {
    struct sigaction action {};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

/// Ends the process the way the signal would have, so that the parent process sees which signal it was.
[[noreturn]] void EndBySignal(int signal) {
    std::signal(signal, SIG_DFL);
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, signal);
    pthread_sigmask(SIG_UNBLOCK, &one, nullptr);
    std::raise(signal);
    std::_Exit(128 + signal);
}

} // namespace

TemporaryFiles::TemporaryFiles() {
    sigemptyset(&m_awaitedSignals);
    for (const int signal : kTerminationSignals) {
        if (!IsIgnored(signal)) sigaddset(&m_awaitedSignals, signal);
    }
    // The destructor sends this one to wake the thread.
    sigaddset(&m_awaitedSignals, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &m_awaitedSignals, &m_previousMask);
    try {
        m_thread = std::thread([this] { AwaitSignal(); });
    } catch (const std::system_error& error) {
        pthread_sigmask(SIG_SETMASK, &m_previousMask, nullptr);
        throw std::runtime_error("a thread can't be started: " + error.code().message() +
                                 "; allow more memory or threads (ulimit -v, -u)");
    }
}

TemporaryFiles::~TemporaryFiles() {
    m_stopping = true;
    pthread_kill(m_thread.native_handle(), SIGUSR1);
    m_thread.join();
    pthread_sigmask(SIG_SETMASK, &m_previousMask, nullptr);
}

void TemporaryFiles::AwaitSignal() {
    int signal = 0;
    while (sigwait(&m_awaitedSignals, &signal) != 0) {
    }
    if (m_stopping) return;
    // Held until the process ends, so that no other thread creates or renames a file meanwhile.
    const std::lock_guard lock(m_mutex);
    for (const std::string& path : m_paths) ::unlink(path.c_str());
    EndBySignal(signal);
}

std::pair<FileDescriptor, std::string> TemporaryFiles::Create(const std::string& folder) {
    const std::string prefix =
        (folder.empty() ? "" : folder + "/") + ".ozmira-" + std::to_string(m_processId) + "-";
    const std::lock_guard lock(m_mutex);
    while (true) {
        std::string path = prefix + std::to_string(m_count++) + ".tmp";
        // Recorded before it exists: if there is no memory to record it, no file is left behind.
        const auto recorded = m_paths.insert(path).first;
        FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        if (!file) {
            const int error = errno;
            m_paths.erase(recorded);
            if (error == EEXIST) continue;
            errno = error;
        }
        return {std::move(file), std::move(path)};
    }
}

bool TemporaryFiles::Finish(const std::string& path, const std::string& finalPath) {
    const std::lock_guard lock(m_mutex);
    if (std::rename(path.c_str(), finalPath.c_str()) != 0) return false;
    m_paths.erase(path);
    return true;
}

void TemporaryFiles::Remove(const std::string& path) {
    const std::lock_guard lock(m_mutex);
    ::unlink(path.c_str());
    m_paths.erase(path);
}

} // namespace ozm::tool
