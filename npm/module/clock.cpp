// The system's clocks, which Emscripten would ask for in integers of 64 bits: JavaScript has to allocate each
// of them.
#include <cmath>
#include <ctime>

/// Milliseconds since some moment; npm/src/instance.js defines it.
extern "C" __attribute__((import_module("env"), import_name("now"))) double Now();

/// There is one clock, whatever is asked for.
extern "C" int clock_gettime(clockid_t, timespec* time) {
    const double milliseconds = Now(), seconds = std::floor(milliseconds / 1000);
    time->tv_sec = static_cast<time_t>(seconds);
    time->tv_nsec = static_cast<long>((milliseconds - 1000 * seconds) * 1e6);
    return 0;
}
