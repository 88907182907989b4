#include "batch_report.h"

#include "file_descriptor.h"

namespace ozm::tool {
namespace {

constexpr size_t kBarWidth = 30;
constexpr std::chrono::milliseconds kUpdateInterval{100};
constexpr const char* kClearLine = "\r\033[K";

/// In one piece, so that lines of several processes do not mix. When standard error is closed there is nobody
/// to tell.
void WriteError(const std::string& text) {
    WriteAll(STDERR_FILENO, {reinterpret_cast<const uint8_t*>(text.data()), text.size()});
}

} // namespace

void PrintProblem(const std::string& message) { WriteError("ozmira: " + message + "\n"); }

BatchReport::BatchReport(size_t count, bool showProgress) : m_showProgress(showProgress), m_done(count) {}

BatchReport::~BatchReport() { HideProgress(); }

void BatchReport::Done(size_t index, std::string problem) {
    const std::lock_guard lock(m_mutex);
    m_done[index] = true;
    ++m_doneCount;
    if (!problem.empty()) {
        ++m_problems;
        m_waiting.emplace(index, std::move(problem));
    }
    while (m_firstOpen < m_done.size() && m_done[m_firstOpen]) ++m_firstOpen;
    while (!m_waiting.empty() && m_waiting.begin()->first < m_firstOpen) {
        HideProgress();
        PrintProblem(m_waiting.begin()->second);
        m_waiting.erase(m_waiting.begin());
    }
    ShowProgress();
}

void BatchReport::ShowProgress() {
    const auto now = std::chrono::steady_clock::now();
    if (!m_showProgress || (m_progressShown && now < m_nextUpdate)) return;
    m_nextUpdate = now + kUpdateInterval;
    m_progressShown = true;
    const size_t filled = kBarWidth * m_doneCount / m_done.size();
    WriteError(kClearLine + ("[" + std::string(filled, '#')) + std::string(kBarWidth - filled, '.') + "] " +
               std::to_string(m_doneCount) + "/" + std::to_string(m_done.size()));
}

void BatchReport::HideProgress() {
    if (!m_progressShown) return;
    WriteError(kClearLine);
    m_progressShown = false;
}

} // namespace ozm::tool
