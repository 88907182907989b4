#include "samples.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace ozm::test;

// Every drawing has its own document, so the threads share only what the libraries share.
TEST(Threads, DrawTheSameAsASingleThread) {
    constexpr size_t kDrawings = 100;
    const auto draw = [](size_t i) { return PixelsOf(Draw(*Parse(Samples()[i % Samples().size()].text))); };
    std::vector<std::vector<uint8_t>> pictures(kDrawings);
    std::atomic<size_t> next = 0;
    std::vector<std::jthread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] {
            for (size_t at = next++; at < kDrawings; at = next++) pictures[at] = draw(at);
        });
    threads.clear();
    for (size_t i = 0; i < kDrawings; ++i) {
        EXPECT_FALSE(pictures[i].empty());
        EXPECT_TRUE(pictures[i] == draw(i)) << i;
    }
}
