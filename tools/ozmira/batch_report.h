#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace ozm::tool {

/// One line on standard error: "ozmira: " and the message.
void PrintProblem(const std::string& message);

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

    /// Item `index` is done; `problem` is the message about it, empty when there is none. Once for every
    /// item.
    void Done(size_t index, std::string problem);

    size_t Problems() const { return m_problems; }

private:
    void ShowProgress();
    void HideProgress();

    std::mutex m_mutex;
    const bool m_showProgress;
    bool m_progressShown = false;
    std::chrono::steady_clock::time_point m_nextUpdate{};
    std::vector<bool> m_done;
    std::map<size_t, std::string> m_waiting; ///< Problems behind an item that is not done.
    size_t m_doneCount = 0;
    size_t m_firstOpen = 0;
    size_t m_problems = 0;
};

} // namespace ozm::tool
