// Parser and renderer as two C functions that any benchmark harness can load with dlopen.
#include "draw.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <memory>

#define OZMIRA_BENCH_EXPORT extern "C" __attribute__((visibility("default")))

/// Parses NUL-terminated SVG text. Returns 0 on success.
OZMIRA_BENCH_EXPORT int ozmira_bench_parse(const char* text) noexcept {
    ozm::SVGParser parser;
    return parser.CreateDocumentWithSVGData(text)->elements.empty() ? 1 : 0;
}

/// Parses NUL-terminated SVG text and draws it, fitted and centred, into `argb`, all of which is overwritten:
/// `size` * `size` premultiplied pixels, bytes A R G B, top row first. Returns 0 on success.
OZMIRA_BENCH_EXPORT int ozmira_bench_render(const char* text, unsigned size, void* argb) noexcept {
    ozm::SVGParser parser;
    const std::unique_ptr<ozm::Document> document = parser.CreateDocumentWithSVGData(text);
    return bench::DrawIntoPixels(*document, size, argb) ? 0 : 1;
}
