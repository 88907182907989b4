#include "report/batch_report.h"

#include "base/text.h"
#include "files/file_descriptor.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include <poll.h>
#include <sys/ioctl.h>

namespace ozm::tool {
namespace {

constexpr size_t kWidestBar = 30, kNarrowestBar = 5;
constexpr size_t kUsualColumns = 80;
constexpr std::chrono::milliseconds kUpdateInterval{100};
constexpr const char* kClearLine = "\r\033[K";

/// Writes in one piece, so that the lines of several processes do not mix. A failure is ignored, because it
/// could not be reported either.
void WriteError(std::string_view text) { WriteAll(STDERR_FILENO, BytesOf(text)); }

/// The width of the terminal behind standard error.
size_t Columns() {
    winsize size{};
    if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsualColumns;
    return size.ws_col;
}

/// Whether a short text can be written to standard error without waiting.
bool CanWriteError() {
    pollfd error{STDERR_FILENO, POLLOUT, 0};
    return ::poll(&error, 1, 0) == 1;
}

/// A line of text without allocation; what does not fit is cut.
class LineBuffer {
public:
    void Add(std::string_view text) {
        const size_t count = std::min(text.size(), m_text.size() - m_size);
        std::copy_n(text.begin(), count, m_text.begin() + static_cast<ptrdiff_t>(m_size));
        m_size += count;
    }
    void Add(size_t number) {
        std::array<char, 20> digits;
        const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        Add({digits.data(), static_cast<size_t>(end - digits.data())});
    }
    void AddRepeated(char c, size_t count) {
        for (; count > 0; --count) Add({&c, 1});
    }
    std::string_view Text() const { return {m_text.data(), m_size}; }

private:
    std::array<char, 128> m_text;
    size_t m_size = 0;
};

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
    for (const std::string_view part : {before, message, after}) {
        end = std::copy(part.begin(), part.end(), end);
    }
    WriteError({line.data(), static_cast<size_t>(end - line.data())});
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
    LineBuffer counts;
    counts.Add(m_doneCount);
    counts.Add("/");
    counts.Add(m_items.size());
    // A line that fills the last column would make some terminals scroll.
    const size_t columns = Columns(), taken = counts.Text().size() + sizeof("[] ");
    if (counts.Text().size() >= columns) return;
    LineBuffer line;
    line.Add(kClearLine);
    if (taken + kNarrowestBar <= columns) {
        const size_t width = std::min(kWidestBar, columns - taken);
        const size_t done = width * m_doneCount / m_items.size();
        line.Add("[");
        line.AddRepeated('#', done);
        line.AddRepeated('.', width - done);
        line.Add("] ");
    }
    line.Add(counts.Text());
    WriteError(line.Text());
}

void BatchReport::Problem(std::string_view message) noexcept {
    const std::lock_guard lock(m_mutex);
    ++m_problems;
    HideProgress();
    PrintProblem(message);
}

void BatchReport::EndEarly(std::string_view message) noexcept {
    // Whoever holds the lock may be waiting for a reader of standard error.
    if (!CanWriteError()) return;
    const std::lock_guard lock(m_mutex);
    HideProgress();
    PrintProblem(message);
}

void BatchReport::HideProgress() {
    if (!m_progressShown) return;
    WriteError(kClearLine);
    m_progressShown = false;
}

} // namespace ozm::tool
