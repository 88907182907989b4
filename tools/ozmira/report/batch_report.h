#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace ozm::tool {

/// One line on standard error: "ozmira: " and the message. Allocates nothing.
void PrintProblem(std::string_view message) noexcept;

/// Tells people on standard error how a batch goes: a line for each problem, in the order of the batch
/// although its items end in any order, and on request a progress bar. May be used by several threads at
/// once.
class BatchReport {
public:
    BatchReport(size_t count, bool showProgress);
    /// Takes the progress bar away.
    ~BatchReport();
    BatchReport(const BatchReport&) = delete;
    BatchReport& operator=(const BatchReport&) = delete;

    /// Item `index` is done; `problem` is the message about it, empty when there is none. `remarks` are lines
    /// that stand before it and count as no problem, each with its end. Once for every item. Allocates
    /// nothing.
    void Done(size_t index, std::string problem, std::string remarks = {}) noexcept;

    size_t Problems() const { return m_problems; }

private:
    struct Item {
        bool isDone = false;
        std::string problem, remarks; ///< Wait until all items before this one are done.
    };

    void ShowProgress();
    void HideProgress();

    std::mutex m_mutex;
    const bool m_showProgress;
    bool m_progressShown = false;
    std::chrono::steady_clock::time_point m_nextUpdate{};
    std::vector<Item> m_items;
    size_t m_doneCount = 0;
    size_t m_firstOpen = 0;
    size_t m_problems = 0;
};

} // namespace ozm::tool
