#include "report/batch_report.h"

#include "files/file_descriptor.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace ozm::tool {
namespace {

constexpr size_t kBarWidth = 30;
constexpr std::chrono::milliseconds kUpdateInterval{100};
constexpr const char* kClearLine = "\r\033[K";

/// Writes in one piece, so that the lines of several processes do not mix. A failure is ignored, because it
/// could not be reported either.
void WriteError(std::string_view text) {
    WriteAll(STDERR_FILENO, {reinterpret_cast<const uint8_t*>(text.data()), text.size()});
}

} // namespace

void PrintProblem(std::string_view message) noexcept {
    constexpr std::string_view before = "ozmira: ", after = "\n";
    // Not a string, because the message may be that memory is short.
    std::array<char, 1024> line;
    if (before.size() + message.size() + after.size() > line.size()) {
        for (const std::string_view part : {before, message, after}) WriteError(part);
        return;
    }
    char* end = line.data();
    for (const std::string_view part : {before, message, after}) end = std::ranges::copy(part, end).out;
    WriteError({line.data(), end});
}

BatchReport::BatchReport(size_t count, bool showProgress) : m_showProgress(showProgress), m_items(count) {}

BatchReport::~BatchReport() { HideProgress(); }

void BatchReport::Done(size_t index, std::string problem, std::string remarks) noexcept {
    const std::lock_guard lock(m_mutex);
    ++m_doneCount;
    if (!problem.empty()) ++m_problems;
    m_items[index] = {true, std::move(problem), std::move(remarks)};
    for (; m_firstUnfinished < m_items.size() && m_items[m_firstUnfinished].isDone; ++m_firstUnfinished) {
        const std::string waiting = std::exchange(m_items[m_firstUnfinished].problem, {});
        const std::string before = std::exchange(m_items[m_firstUnfinished].remarks, {});
        if (waiting.empty() && before.empty()) continue;
        HideProgress();
        WriteError(before);
        if (!waiting.empty()) PrintProblem(waiting);
    }
    ShowProgress();
}

void BatchReport::ShowProgress() {
    const auto now = std::chrono::steady_clock::now();
    if (!m_showProgress || (m_progressShown && now < m_nextUpdate)) return;
    m_nextUpdate = now + kUpdateInterval;
    m_progressShown = true;
    std::array<char, kBarWidth + 1> bar{};
    bar.fill('.');
    bar.back() = '\0';
    std::fill_n(bar.begin(), kBarWidth * m_doneCount / m_items.size(), '#');
    std::array<char, 128> line;
    const int length = std::snprintf(line.data(), line.size(), "%s[%s] %zu/%zu", kClearLine, bar.data(),
                                     m_doneCount, m_items.size());
    WriteError({line.data(), static_cast<size_t>(length)});
}

void BatchReport::HideProgress() {
    if (!m_progressShown) return;
    WriteError(kClearLine);
    m_progressShown = false;
}

} // namespace ozm::tool
