// Checking and conforming: the whole list of icons, the median icon, and how time grows with the length of
// path data, the number of elements and that of references, on generated drawings. Where growth is linear,
// items_per_second stays the same.
#include "generated_svg.h"
#include "icons.h"
#include "run.h"

#include <Ozmira/SVG/ozmSVGParser.h>
#include <OzmiraConform/OzmiraConform.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using Work = void (*)(const std::string&);

void Check(const std::string& text) { benchmark::DoNotOptimize(ozm::conform::Check(text)); }

void Conform(const std::string& text) { benchmark::DoNotOptimize(ozm::conform::Conform(text)); }

/// What a drawing costs without either, for comparison.
void Parse(const std::string& text) {
    benchmark::DoNotOptimize(ozm::SVGParser().CreateDocumentWithSVGData(text.c_str()));
}

void Icons(benchmark::State& state, Work work, const std::vector<std::string>& texts) {
    for (auto _ : state) {
        for (const std::string& text : texts) work(text);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(texts.size()));
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(bench::TotalBytes(texts)));
}

/// The texts whose size is nearest to the median: a hundredth of all, at least one.
std::vector<std::string> MedianIcons(std::vector<std::string> texts) {
    std::sort(texts.begin(), texts.end(), [](const auto& a, const auto& b) { return a.size() < b.size(); });
    const size_t count = std::max<size_t>(1, texts.size() / 100), first = (texts.size() - count) / 2;
    return {texts.begin() + static_cast<ptrdiff_t>(first),
            texts.begin() + static_cast<ptrdiff_t>(first + count)};
}

/// With an arc first, so that the drawing has to be rewritten.
std::string WithArc(std::string text) {
    text.insert(text.find('>') + 1, "<path d='M0 0a5 5 0 0 1 5 5z'/>");
    return text;
}

void Growth(benchmark::State& state, Work work, std::string (*generate)(size_t)) {
    const std::string text = WithArc(generate(static_cast<size_t>(state.range(0))));
    for (auto _ : state) work(text);
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

void RegisterAll(const std::string& name, Work work, const std::vector<std::string>& texts,
                 const std::vector<std::string>& median) {
    bench::Register(name + "/Icons", [&, work](benchmark::State& state) { Icons(state, work, texts); });
    bench::Register(name + "/MedianIcons", [&, work](benchmark::State& state) {
        Icons(state, work, median);
    })->Unit(benchmark::kMicrosecond);
    const std::pair<const char*, std::string (*)(size_t)> drawings[] = {
        {"PathBytes", bench::PathOfSize},
        {"Groups", bench::FlatGroups},
        {"NestedGroups", bench::NestedGroups},
        {"References", bench::UseReferences},
        {"ClippedPaths", bench::ClippedPaths}};
    for (const auto& [kind, generate] : drawings) {
        const bool isNested = generate == bench::NestedGroups;
        bench::Register(name + "/" + kind, [work, generate = generate](
                                               benchmark::State& state) { Growth(state, work, generate); })
            ->RangeMultiplier(10)
            ->Range(10, isNested ? 1000 : 10'000);
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> texts = bench::LoadIcons(argc, argv);
    const std::vector<std::string> median = MedianIcons(texts);
    RegisterAll("Parse", Parse, texts, median);
    RegisterAll("Check", Check, texts, median);
    RegisterAll("Conform", Conform, texts, median);
    return bench::RunBenchmarks(argc, argv);
}
