#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace bench {

/// Registers a benchmark that is reported in milliseconds. If it is repeated, the row "min" reports the
/// fastest repetition, which other work on the machine disturbs least.
benchmark::internal::Benchmark* Register(const std::string& name,
                                         std::function<void(benchmark::State&)> function);

/// Runs the registered benchmarks with Google Benchmark's options from the command line. Returns the exit
/// code.
int RunBenchmarks(int argc, char** argv);

} // namespace bench
