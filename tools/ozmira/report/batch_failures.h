#pragma once

#include "base/parallel.h"

#include <atomic>
#include <cstddef>
#include <string>

namespace ozm::tool {

/// Turns what goes wrong with the inputs of a batch into the problems that are reported. A destination that
/// takes no output is one problem: it is told once, and stops the batch. May be used by several threads at
/// once.
class BatchFailures {
public:
    /// Does the work on an input. `work` returns a problem, or an empty string; for what it throws, the
    /// problem names the input that `source` points to by then. Returns the problem; empty if there is none,
    /// or if another input was told of it.
    template <typename Work>
    std::string Run(const std::string* const& source, Work work) noexcept {
        try {
            return work();
        } catch (...) {
            return DescribeException(*source);
        }
    }

    /// Requested once no output can be written any more.
    const StopRequest& Stop() const { return m_stop; }
    /// Number of inputs that were given up because another one was told of the destination.
    size_t DroppedCount() const { return m_dropped; }

private:
    /// The problem for the exception that is being handled.
    std::string DescribeException(const std::string& source) noexcept;

    StopRequest m_stop;
    std::atomic<size_t> m_dropped = 0;
};

} // namespace ozm::tool
