// How time and memory grow with the length of path data, the number of elements and the number of pixels, on
// generated drawings. Where time grows linearly, items_per_second stays the same. peak_MB is the memory that
// the first run takes, not counting the text, the bitmap and, when drawing, the document.
#include "draw.h"
#include "generated_svg.h"
#include "process_memory.h"
#include "run.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace {

/// Side of the bitmap, in pixels, where something else grows.
constexpr unsigned kSide = 256;
constexpr unsigned kLargestSide = 8192;

std::unique_ptr<ozm::Document> Parse(const std::string& text) {
    return ozm::SVGParser().CreateDocumentWithSVGData(text.c_str());
}

/// Measures `work`, which processes `items` items and returns false on failure.
template <typename Work>
void Measure(benchmark::State& state, int64_t items, Work work) {
    bool done = true;
    const std::optional<double> peak = bench::PeakMemory([&] { done = work(); });
    done = done && work(); // Warms up this thread's buffers.
    if (!done) return state.SkipWithError("a drawing could not be parsed or drawn");
    for (auto _ : state) {
        if (!work()) return state.SkipWithError("a drawing could not be parsed or drawn");
    }
    state.SetItemsProcessed(state.iterations() * items);
    state.SetComplexityN(items);
    if (peak) state.counters["peak_MB"] = *peak / 1e6;
}

using Generator = std::string (*)(size_t);

void MeasureParsing(benchmark::State& state, Generator generate) {
    const std::string text = generate(static_cast<size_t>(state.range(0)));
    Measure(state, state.range(0), [&] { return !Parse(text)->elements.empty(); });
}

/// Measures drawing with a new renderer each time.
void MeasureDrawing(benchmark::State& state, Generator generate) {
    const std::unique_ptr<ozm::Document> document = Parse(generate(static_cast<size_t>(state.range(0))));
    std::vector<uint32_t> pixels(size_t{kSide} * kSide);
    Measure(state, state.range(0), [&] { return bench::DrawIntoPixels(*document, kSide, pixels.data()); });
}

void MeasurePixels(benchmark::State& state) {
    const std::unique_ptr<ozm::Document> document = Parse(bench::LargeShapes());
    const auto side = static_cast<unsigned>(state.range(0));
    std::vector<uint32_t> pixels(size_t{side} * side);
    Measure(state, state.range(0) * state.range(0),
            [&] { return bench::DrawIntoPixels(*document, side, pixels.data()); });
}

void Register(const std::string& what, Generator generate, const std::vector<int64_t>& sizes) {
    bench::Register("Parse/" + what, [=](benchmark::State& state) { MeasureParsing(state, generate); })
        ->ArgsProduct({sizes})
        ->Complexity();
    bench::Register("Draw/" + what, [=](benchmark::State& state) { MeasureDrawing(state, generate); })
        ->ArgsProduct({sizes})
        ->Complexity();
}

} // namespace

int main(int argc, char** argv) {
    bench::KeepFreedMemory();
    const std::vector<int64_t> counts{10, 100, 1'000, 10'000, 100'000};
    Register("PathData", bench::PathOfSize, {1'000, 10'000, 100'000, 1'000'000, 10'000'000});
    Register("FlatGroups", bench::FlatGroups, counts);
    Register("NestedGroups", bench::NestedGroups, {10, 100, 1'000});
    Register("UseReferences", bench::UseReferences, counts);
    Register("ClippedPaths", bench::ClippedPaths, counts);
    bench::Register("Draw/Pixels", MeasurePixels)
        ->RangeMultiplier(2)
        ->Range(64, kLargestSide)
        ->Complexity(benchmark::oN);
    return bench::RunBenchmarks(argc, argv);
}
