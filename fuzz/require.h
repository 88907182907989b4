#pragma once

#include <cstdlib>

/// Ends the process, which the fuzzer reports as a finding, unless the condition holds.
inline void Require(bool condition) {
    if (!condition) std::abort();
}
