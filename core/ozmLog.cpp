#include <Ozmira/ozmLog.h>

#include <utility>

namespace ozm {

void Log::Append(Level level, std::string message) { entries.push_back({level, std::move(message)}); }

const char* Log::Label(Level level) {
    switch (level) {
    case Level::Error: return "[Error]    ";
    case Level::Warning: return "[Warning]  ";
    case Level::Info: return "[Info]     ";
    case Level::Debug: return "[Debug]    ";
    }
    return "[Unknown]  ";
}

std::string to_string(const Log::Entry& entry) {
    return std::string(Log::Label(entry.level)) + ' ' + entry.message + '\n';
}

std::string to_string(const Log& log) {
    std::string text;
    for (const Log::Entry& entry : log.entries) text += to_string(entry);
    return text;
}

} // namespace ozm
