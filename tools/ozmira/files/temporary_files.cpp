#include "files/temporary_files.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ozm::tool {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = ".ozmira-", kExtension = ".tmp";
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

/// Numbers of processes mean something only on one machine and in one container, so names begin with a mark
/// of it.
std::string MachinePrefix() {
    std::array<char, 256> host{};
    struct stat processes {};
    ::gethostname(host.data(), host.size() - 1);
    ::stat("/proc/self/ns/pid", &processes);
    const size_t mark = std::hash<std::string>()(host.data() + std::to_string(processes.st_ino));
    std::array<char, 16> digits;
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), mark, 16).ptr;
    return std::string(kPrefix) + std::string(digits.data(), end) + "-";
}

/// Whether the process whose number a text begins with has ended.
bool HasEnded(std::string_view text) {
    pid_t process = 0;
    const auto [last, error] = std::from_chars(text.data(), text.data() + text.size(), process);
    return error == std::errc{} && process > 0 && ::kill(process, 0) != 0 && errno == ESRCH;
}

bool IsOlderThanADay(const fs::path& path) {
    std::error_code error;
    const auto time = fs::last_write_time(path, error);
    return !error && fs::file_time_type::clock::now() - time > std::chrono::hours(24);
}

} // namespace

TemporaryFiles::TemporaryFiles(std::function<void()> onSignal)
    : m_onSignal(std::move(onSignal)), m_machinePrefix(MachinePrefix()) {
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
    // What lies in a folder stands behind it in the order of the set.
    for (auto folder = m_madeFolders.rbegin(); folder != m_madeFolders.rend(); ++folder)
        ::rmdir(folder->c_str());
    if (m_onSignal) m_onSignal();
    EndBySignal(signal);
}

std::pair<FileDescriptor, std::string> TemporaryFiles::Create(const std::string& folder) {
    const std::string prefix =
        (folder.empty() ? "" : folder + "/") + m_machinePrefix + std::to_string(::getpid()) + "-";
    const std::lock_guard lock(m_mutex);
    bool hasFolder = false;
    while (true) {
        std::string path = prefix + std::to_string(m_count++) + std::string(kExtension);
        // Recorded before it exists: if there is no memory to record it, no file is left behind.
        const auto recorded = m_paths.insert(path).first;
        FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        if (file) return {std::move(file), std::move(path)};
        int error = errno;
        m_paths.erase(recorded);
        if (error == ENOENT && !std::exchange(hasFolder, true)) error = MakeFolder(folder);
        if (error == 0 || error == EEXIST) continue;
        RemoveEmptyFolders(folder);
        errno = error;
        return {};
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
    RemoveEmptyFolders(fs::path(path).parent_path());
}

int TemporaryFiles::MakeFolder(const std::string& folder) {
    // Recorded before it exists, as files are.
    const auto [recorded, isNew] = m_madeFolders.insert(folder);
    const auto make = [&] { return ::mkdir(folder.c_str(), 0777) == 0 ? 0 : errno; };
    int error = make();
    const std::string around = fs::path(folder).parent_path().string();
    if (error == ENOENT && !around.empty() && around != folder) {
        error = MakeFolder(around);
        if (error == 0 || error == EEXIST) error = make();
    }
    if (error != 0 && isNew) m_madeFolders.erase(recorded);
    return error;
}

void TemporaryFiles::RemoveEmptyFolders(fs::path folder) {
    for (; folder.has_relative_path(); folder = folder.parent_path()) {
        const auto made = m_madeFolders.find(folder.string());
        if (made == m_madeFolders.end()) continue;
        if (::rmdir(folder.c_str()) != 0) return;
        m_madeFolders.erase(made);
    }
}

void TemporaryFiles::Sweep(const std::string& folder) const {
    std::error_code error;
    for (fs::directory_iterator at(folder.empty() ? "." : folder, error), end; !error && at != end;
         at.increment(error)) {
        const std::string name = at->path().filename().string();
        if (!name.starts_with(kPrefix) || !name.ends_with(kExtension)) continue;
        const bool isAbandoned = name.starts_with(m_machinePrefix)
                                     ? HasEnded(std::string_view(name).substr(m_machinePrefix.size()))
                                     : IsOlderThanADay(at->path());
        if (isAbandoned) ::unlink(at->path().c_str());
    }
}

} // namespace ozm::tool
