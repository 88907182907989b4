// Filling alone: the paths of the icons, in pixels and in each library's own form, solid and anti-aliased.
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
/// Mean difference to Ozmira's coverage, of 255, up to which a library counts as having drawn the same.
constexpr double kSamePicture = 0.3;

using Subjects = std::vector<std::unique_ptr<bench::FillSubject>>;

Subjects Convert(const bench::Filler& filler, unsigned size, const std::vector<std::string>& texts) {
    Subjects subjects;
    for (const std::string& text : texts) {
        const auto document = ozm::SVGParser().CreateDocumentWithSVGData(text.c_str());
        subjects.push_back(filler.convert(bench::CollectOutlines(*document, size)));
    }
    return subjects;
}

/// How far the alpha of a library's pixels lies from Ozmira's, on average over all icons at 72 pixels.
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
    return sum / (static_cast<double>(pixels.size() / 4) * static_cast<double>(subjects.size()));
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
        if (const double difference = MeanDifference(*filler, texts); !(difference < kSamePicture)) {
            std::cerr << filler->name << " draws something else than Ozmira, " << difference
                      << " of 255 on average, so their times can't be compared; mend bench/fillers\n";
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
