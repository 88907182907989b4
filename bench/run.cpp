#include "run.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace bench {

benchmark::internal::Benchmark* Register(const std::string& name,
                                         std::function<void(benchmark::State&)> function) {
    return benchmark::RegisterBenchmark(name.c_str(), std::move(function))
        ->Unit(benchmark::kMillisecond)
        ->ComputeStatistics("min", [](const std::vector<double>& times) {
            return *std::min_element(times.begin(), times.end());
        });
}

int RunBenchmarks(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

} // namespace bench
