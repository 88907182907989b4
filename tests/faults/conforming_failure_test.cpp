// Every single allocation of checking and rewriting a drawing fails.
#include "conforming_samples.h"
#include "fail_each_allocation.h"

#include <OzmiraConform/OzmiraConform.h>

#include <gtest/gtest.h>

#include <optional>

using namespace ozm::conform;
using namespace ozm::test;

class ConformingFailure : public testing::TestWithParam<ConformingSample> {
protected:
    void SetUp() override {
#ifdef OZMIRA_SANITIZED
        if (GetParam().combinesAreas) GTEST_SKIP() << "the library for polygons leaks";
#endif
    }

    /// The library for polygons loses what it is working on.
    static int64_t MayLeak() { return GetParam().combinesAreas ? 1'000 : 0; }
};

TEST_P(ConformingFailure, LeavesAWholeResultOrNone) {
    const std::string& text = GetParam().text;
    Options options;
    options.lossy = true;
    options.outlineStrokes = true;
    const std::string expected = Conform(text, options).text;
    ASSERT_NE(expected, "");
    FailEachAllocation(
        [&] { return std::optional(Conform(text, options)); },
        [&](const std::optional<Result>& result) { EXPECT_TRUE(!result || result->text == expected); },
        MayLeak());
}

TEST_P(ConformingFailure, LeavesAllFindingsOrNone) {
    const std::string& text = GetParam().text;
    const size_t expected = Check(text).size();
    FailEachAllocation([&] { return std::optional(Check(text)); },
                       [&](const std::optional<std::vector<Finding>>& findings) {
                           EXPECT_TRUE(!findings || findings->size() == expected);
                       },
                       MayLeak());
}

INSTANTIATE_TEST_SUITE_P(Samples, ConformingFailure, testing::ValuesIn(ConformingSamples()),
                         [](const auto& test) { return std::to_string(test.index); });
