// Filling alone: the icons' paths, converted beforehand to pixels and to each library's own path type, filled
// with a solid colour and anti-aliased.
#include "icons.h"
#include "outlines.h"
#include "run.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr unsigned kSizes[] = {24, 72, 256, 1024};
/// Upper bound of the mean difference from Ozmira's coverage, in 255ths. A library beyond it has drawn
/// something else.
constexpr double kMaximumMeanDifference = 0.3;

using Subjects = std::vector<std::unique_ptr<bench::FillSubject>>;

Subjects Convert(const bench::Filler& filler, unsigned size, const std::vector<std::string>& texts) {
    Subjects subjects;
    for (const std::string& text : texts) {
        const auto document = ozm::SVGParser().CreateDocumentWithSVGData(text.c_str());
        subjects.push_back(filler.convert(bench::CollectOutlines(*document, size)));
    }
    return subjects;
}

/// The mean absolute difference between a library's alpha and Ozmira's, over all icons at 72 pixels.
double MeanDifference(const bench::Filler& filler, const std::vector<std::string>& texts) {
    constexpr unsigned size = 72;
    const bench::Filler& reference = bench::kOzmiraFiller;
    const Subjects subjects = Convert(filler, size, texts);
    const Subjects expected = Convert(reference, size, texts);
    std::vector<uint8_t> pixels(size_t{size} * size * 4), expectedPixels(pixels.size());
    double sum = 0;
    for (size_t i = 0; i < subjects.size(); ++i) {
        subjects[i]->Fill(size, pixels.data());
        expected[i]->Fill(size, expectedPixels.data());
        for (size_t at = 0; at < pixels.size(); at += 4) {
            sum += std::abs(pixels[at + filler.alphaByte] - expectedPixels[at + reference.alphaByte]);
        }
    }
    return sum / (static_cast<double>(pixels.size()) / 4 * static_cast<double>(subjects.size()));
}

void Fill(benchmark::State& state, const bench::Filler& filler, unsigned size,
          const std::vector<std::string>& texts) {
    const Subjects subjects = Convert(filler, size, texts);
    std::vector<uint32_t> pixels(size_t{size} * size);
    for (auto _ : state) {
        for (const auto& subject : subjects) subject->Fill(size, pixels.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(subjects.size()));
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> texts = bench::LoadIcons(argc, argv);
    for (const bench::Filler* filler : bench::Fillers()) {
        if (const double difference = MeanDifference(*filler, texts);
            !(difference < kMaximumMeanDifference)) {
            std::cerr << filler->name << " differs from Ozmira by " << difference
                      << " of 255 on average, so their times cannot be compared; fix bench/fillers\n";
            return 1;
        }
    }
    for (const unsigned size : kSizes) {
        for (const bench::Filler* filler : bench::Fillers()) {
            bench::Register(std::string("Fill/") + filler->name + '/' + std::to_string(size),
                            [=, &texts](benchmark::State& state) { Fill(state, *filler, size, texts); });
        }
    }
    return bench::RunBenchmarks(argc, argv);
}
