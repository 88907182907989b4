#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace ozm::tool {

/// Prints "ozmira: " and a message as one line to standard error. Allocates nothing.
void PrintProblem(std::string_view message) noexcept;

/// Reports on a batch to standard error: a line for each problem and, on request, a progress bar. Problems
/// appear in the order of the items, even though items may finish in any order. May be used by several
/// threads at once.
class BatchReport {
public:
    BatchReport(size_t count, bool showProgress);
    /// Removes the progress bar.
    ~BatchReport();
    BatchReport(const BatchReport&) = delete;
    BatchReport& operator=(const BatchReport&) = delete;

    /// Reports that item `index` is done. `problem` is the message about it; empty if there is none.
    /// `remarks` are complete lines that are printed before it and do not count as a problem. Call once for
    /// every item. Allocates nothing.
    void Done(size_t index, std::string problem, std::string remarks = {}) noexcept;

    /// Reports and counts a problem that is no item's.
    void Problem(std::string_view message) noexcept;

    /// Removes the progress bar and prints a last message, because a signal is about to end the process.
    /// Does nothing while standard error takes no text.
    void EndEarly(std::string_view message) noexcept;

    /// Number of problems.
    size_t Problems() const { return m_problems; }
    /// Number of items that were never reported as done.
    size_t Unfinished() const { return m_items.size() - m_doneCount; }

private:
    struct Item {
        bool isDone = false;
        std::string problem, remarks; ///< Kept until all items before this one are done.
    };

    void ShowProgress();
    void HideProgress();

    std::mutex m_mutex;
    const bool m_showProgress;
    bool m_progressShown = false;
    std::chrono::steady_clock::time_point m_nextUpdate{};
    std::vector<Item> m_items;
    size_t m_doneCount = 0;
    size_t m_firstUnfinished = 0;
    size_t m_problems = 0;
};

} // namespace ozm::tool
