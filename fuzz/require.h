#pragma once

#include <cstdlib>

/// Aborts unless the condition holds; the fuzzer reports that as a finding.
inline void Require(bool condition) {
    if (!condition) std::abort();
}
