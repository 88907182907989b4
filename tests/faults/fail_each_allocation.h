// Runs a function again and again, each time with another allocation failing.
#pragma once

#include "allocations.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <thread>

namespace ozm::test {

/// Runs `function` repeatedly, each time with the next allocation failing, by itself and then together with
/// all that follow, until none is left to fail. `check` examines each result. Each run has a thread of its
/// own, so that no buffers are left from the run before. No more than `mayLeak` blocks may be left after
/// each.
template <typename Function, typename Check>
void FailEachAllocation(Function function, Check check, int64_t mayLeak = 0) {
    constexpr size_t kForever = std::numeric_limits<size_t>::max();
    for (const bool recovers : {true, false}) {
        bool hasFailed = true;
        for (size_t n = 0; hasFailed && !testing::Test::HasFailure(); ++n) {
            SCOPED_TRACE("allocation " + std::to_string(n) + (recovers ? "" : " and all that follow"));
            const int64_t before = LiveBlocks();
            std::thread([&] {
                decltype(function()) result{};
                {
                    const FailingAllocations failing(n, recovers ? n : kForever);
                    try {
                        result = function();
                    } catch (const std::bad_alloc&) {
                    }
                    hasFailed = failing.HaveFailed();
                }
                if (!hasFailed) {
                    EXPECT_TRUE(result) << "although no allocation failed";
                    EXPECT_GT(n, 3u);
                }
                check(result);
            }).join();
            EXPECT_GE(LiveBlocks(), before);
            EXPECT_LE(LiveBlocks(), before + mayLeak);
        }
    }
}

} // namespace ozm::test
