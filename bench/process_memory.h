#pragma once

#include <functional>
#include <optional>

namespace bench {

/// Makes glibc keep freed memory. Otherwise it returns large blocks to the kernel, and getting their pages
/// back in every round can take longer than the work that is measured.
void KeepFreedMemory();

/// Runs `work` on a new thread, which has no buffers yet, and returns the peak growth of the process's
/// resident memory in bytes. Returns nothing if the system does not report it; only Linux does.
std::optional<double> PeakMemory(const std::function<void()>& work);

} // namespace bench
