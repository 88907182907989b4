// Parsing SVG text: every backend reads the whole list of icons.
#include "backend.h"
#include "icons.h"
#include "run.h"

#include <cstdint>
#include <string>
#include <vector>

namespace {

void Parse(benchmark::State& state, const bench::Backend& backend, const std::vector<std::string>& texts) {
    for (auto _ : state) {
        for (const std::string& text : texts) {
            if (!backend.parse(text)) return state.SkipWithError("a file could not be parsed");
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(texts.size()));
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(bench::TotalBytes(texts)));
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> texts = bench::LoadIcons(argc, argv);
    for (const bench::Backend* backend : bench::Backends()) {
        bench::Register(std::string("Parse/") + backend->name,
                        [&, backend](benchmark::State& state) { Parse(state, *backend, texts); });
    }
    return bench::RunBenchmarks(argc, argv);
}
