#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace bench {

/// Registers a benchmark that is reported in milliseconds. Where it is repeated, the fastest repetition is
/// reported as "min": on a machine with other work it is the one that tells.
benchmark::internal::Benchmark* Register(const std::string& name,
                                         std::function<void(benchmark::State&)> function);

/// Runs what is registered, as Google Benchmark's options in the arguments have it. Returns the exit code.
int RunBenchmarks(int argc, char** argv);

} // namespace bench
