#pragma once

#include <functional>
#include <optional>

namespace bench {

/// Makes glibc keep what is freed. Otherwise large blocks go back to the kernel, and getting their pages
/// again in every round can take longer than what is measured.
void KeepFreedMemory();

/// By how many bytes the process's resident memory grew, at most, while `work` ran on a new thread, whose
/// buffers are still to be made. Nothing where the system doesn't tell: that takes Linux.
std::optional<double> PeakMemory(const std::function<void()>& work);

} // namespace bench
