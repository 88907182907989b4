// How near each library's coverage is to the exact one: the mean error of the pixels that are partly covered,
// the largest error and the share of pixels off by more than 16, in 255ths, as a Markdown table.
//
// Of each icon, the first path is filled. Exact is a picture 16 times as large, drawn by Cairo and averaged;
// by Ozmira where Cairo is missing.
#include "icons.h"
#include "outlines.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr unsigned kSizes[] = {24, 72};
constexpr unsigned kEnlarged = 16;
constexpr size_t kEveryNth = 8; // icon is measured

std::vector<uint8_t> Alphas(const bench::Filler& filler, const ozm::Document& document, unsigned size) {
    bench::Outlines outlines = bench::CollectOutlines(document, size);
    outlines.resize(
        std::min(outlines.size(), size_t{1})); // what several paint in a pixel is blended, not covered
    std::vector<uint8_t> pixels(size_t{size} * size * 4), alphas;
    filler.convert(outlines)->Fill(size, pixels.data());
    for (size_t at = filler.alphaByte; at < pixels.size(); at += 4) alphas.push_back(pixels[at]);
    return alphas;
}

#ifdef OZMIRA_BENCH_CAIRO
const bench::Filler& kReference = bench::kCairoFiller;
#else
const bench::Filler& kReference = bench::kOzmiraFiller;
#endif

std::vector<double> ExactAlphas(const ozm::Document& document, unsigned size) {
    const std::vector<uint8_t> large = Alphas(kReference, document, size * kEnlarged);
    const size_t width = size_t{size} * kEnlarged;
    std::vector<double> exact(size_t{size} * size);
    for (size_t i = 0; i < large.size(); ++i) {
        const size_t x = i % width / kEnlarged, y = i / width / kEnlarged;
        exact[y * size + x] += double(large[i]) / (kEnlarged * kEnlarged);
    }
    return exact;
}

struct Errors {
    double sum = 0, largest = 0;
    size_t partly = 0, coarse = 0;

    void Add(double error, bool isPartly) {
        sum += isPartly ? error : 0;
        partly += isPartly;
        coarse += error > 16;
        largest = std::max(largest, error);
    }
};

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> texts = bench::LoadIcons(argc, argv);
    const std::vector<const bench::Filler*> fillers = bench::Fillers();
    std::puts("| | px | mean error | largest | off by more than 16 |\n|---|---|---|---|---|");
    for (const unsigned size : kSizes) {
        std::vector<Errors> errors(fillers.size());
        for (size_t i = 0; i < texts.size(); i += kEveryNth) {
            const auto document = ozm::SVGParser().CreateDocumentWithSVGData(texts[i].c_str());
            const std::vector<double> exact = ExactAlphas(*document, size);
            for (size_t k = 0; k < fillers.size(); ++k) {
                const std::vector<uint8_t> alphas = Alphas(*fillers[k], *document, size);
                for (size_t at = 0; at < exact.size(); ++at)
                    errors[k].Add(std::abs(alphas[at] - exact[at]), exact[at] > 0 && exact[at] < 255);
            }
        }
        for (size_t k = 0; k < fillers.size(); ++k) {
            const Errors& e = errors[k];
            std::printf("| %s | %u | %.2f | %.0f | %.2f %% |\n", fillers[k]->name, size,
                        e.sum / double(std::max(e.partly, size_t{1})), e.largest,
                        100 * double(e.coarse) / double(std::max(e.partly, size_t{1})));
        }
    }
    return 0;
}
