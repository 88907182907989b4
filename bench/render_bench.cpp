// Drawing icons: parsed documents (Render), and text, which is parsed each time (ParseAndRender).
#include "backend.h"
#include "icons.h"
#include "run.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr unsigned kSizes[] = {24, 72, 256, 1024};

std::vector<uint32_t> Pixels(unsigned size) { return std::vector<uint32_t>(size_t{size} * size); }

void CountIcons(benchmark::State& state, size_t icons) {
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(icons));
}

void Render(benchmark::State& state, const bench::Backend& backend, unsigned size,
            const std::vector<std::string>& texts) {
    std::vector<std::unique_ptr<bench::Drawing>> drawings;
    for (const std::string& text : texts) {
        drawings.push_back(backend.load(text));
        if (!drawings.back()) return state.SkipWithError("a file could not be parsed");
    }
    std::vector<uint32_t> pixels = Pixels(size);
    for (auto _ : state) {
        for (const auto& drawing : drawings) {
            if (!drawing->Draw(size, pixels.data())) return state.SkipWithError("a file could not be drawn");
        }
    }
    CountIcons(state, texts.size());
}

void ParseAndRender(benchmark::State& state, const bench::Backend& backend, unsigned size,
                    const std::vector<std::string>& texts) {
    std::vector<uint32_t> pixels = Pixels(size);
    for (auto _ : state) {
        for (const std::string& text : texts) {
            const std::unique_ptr<bench::Drawing> drawing = backend.load(text);
            if (!drawing || !drawing->Draw(size, pixels.data())) {
                return state.SkipWithError("a file could not be drawn");
            }
        }
    }
    CountIcons(state, texts.size());
}

using Measure = void (*)(benchmark::State&, const bench::Backend&, unsigned, const std::vector<std::string>&);

void Register(const char* what, Measure measure, const std::vector<std::string>& texts) {
    for (const unsigned size : kSizes) {
        for (const bench::Backend* backend : bench::Backends()) {
            if (!backend->load) continue;
            const std::string name = std::string(what) + '/' + backend->name + '/' + std::to_string(size);
            bench::Register(name,
                            [=, &texts](benchmark::State& state) { measure(state, *backend, size, texts); });
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> texts = bench::LoadIcons(argc, argv);
    Register("Render", Render, texts);
    Register("ParseAndRender", ParseAndRender, texts);
    return bench::RunBenchmarks(argc, argv);
}
