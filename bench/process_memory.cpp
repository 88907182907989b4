#include "process_memory.h"

#include <fstream>
#include <limits>
#include <string>
#include <thread>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace bench {

namespace {

/// A size from /proc/self/status, in bytes.
std::optional<double> StatusField(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (double kilobytes; word == name && status >> kilobytes) return kilobytes * 1024;
    }
    return std::nullopt;
}

/// Resets the peak of resident memory to its current size.
bool ResetPeak() {
    std::ofstream clearReferences("/proc/self/clear_refs"); // 5 resets the peak.
    clearReferences << 5 << std::flush;
    return clearReferences.good();
}

} // namespace

void KeepFreedMemory() {
#ifdef __GLIBC__
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_ARENA_MAX, 1); // Other arenas use small heaps, which are unmapped when they are empty.
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
#endif
}

std::optional<double> PeakMemory(const std::function<void()>& work) {
#ifdef __GLIBC__
    // Memory that is already free but still resident would hide what the work takes.
    malloc_trim(0);
#endif
    const bool canReset = ResetPeak();
    const std::optional<double> before = StatusField("VmRSS:");
    std::thread(work).join();
    const std::optional<double> peak = StatusField("VmHWM:");
    if (!canReset || !before || !peak) return std::nullopt;
    return *peak - *before;
}

} // namespace bench
