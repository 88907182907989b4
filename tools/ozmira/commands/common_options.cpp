#include "commands/common_options.h"

#include "base/tool_limits.h"
#include "commands/arguments.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <thread>

#include <unistd.h>

namespace ozm::tool {

void DrawingOptions::AddSize(CLI::App& command) {
    command.add_option("--width", width, "Largest width in points; proportions are kept")->type_name("W");
    command.add_option("--height", height, "Largest height in points")->type_name("H");
}

void DrawingOptions::AddTimeout(CLI::App& command) {
    command.add_option("--timeout", timeout, "Processor seconds for a picture, 0: no limit")->type_name("S");
}

CGSize DrawingOptions::Size() const {
    CGSize size{0, 0};
    if (width) size.width = ParseLengthArgument("--width", *width);
    if (height) size.height = ParseLengthArgument("--height", *height);
    return size;
}

double DrawingOptions::Timeout() const {
    return timeout ? ParseTimeout("--timeout", *timeout) : kDefaultTimeout;
}

void BatchOptions::Add(CLI::App& command) {
    command.add_option("-j,--jobs", jobs, "Threads, 1 to 256; one for each core if absent")->type_name("N");
    command.add_flag("-q,--quiet", quiet, "Print problems only");
}

unsigned BatchOptions::Jobs() const {
    if (jobs) return ParseJobs("-j", *jobs);
    return std::clamp(std::thread::hardware_concurrency(), 1u, kMaximumJobs);
}

bool BatchOptions::ShowsProgress(size_t count) const {
    return count > 1 && !quiet && ::isatty(STDERR_FILENO) != 0;
}

} // namespace ozm::tool
