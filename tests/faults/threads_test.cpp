#include "conforming_samples.h"
#include "samples.h"

#include <OzmiraConform/OzmiraConform.h>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

using namespace ozm::test;

namespace {

/// Does the tasks 0 to `count` - 1, shared out among eight threads.
void DoOnThreads(size_t count, const std::function<void(size_t)>& task) {
    std::atomic<size_t> next = 0;
    std::vector<std::jthread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] {
            for (size_t at = next++; at < count; at = next++) task(at);
        });
}

} // namespace

// Every drawing has its own document, so the threads share only what the libraries share.
TEST(Threads, DrawTheSameAsASingleThread) {
    constexpr size_t kDrawings = 100;
    const auto draw = [](size_t i) { return PixelsOf(Draw(*Parse(Samples()[i % Samples().size()].text))); };
    std::vector<std::vector<uint8_t>> pictures(kDrawings);
    DoOnThreads(kDrawings, [&](size_t at) { pictures[at] = draw(at); });
    for (size_t i = 0; i < kDrawings; ++i) {
        EXPECT_FALSE(pictures[i].empty());
        EXPECT_TRUE(pictures[i] == draw(i)) << i;
    }
}

TEST(Threads, ConformTheSameAsASingleThread) {
    constexpr size_t kDrawings = 100;
    const auto conform = [](size_t i) {
        return ozm::conform::Conform(ConformingSamples()[i % ConformingSamples().size()].text).text;
    };
    std::vector<std::string> texts(kDrawings);
    DoOnThreads(kDrawings, [&](size_t at) { texts[at] = conform(at); });
    for (size_t i = 0; i < kDrawings; ++i) EXPECT_EQ(texts[i], conform(i));
}
