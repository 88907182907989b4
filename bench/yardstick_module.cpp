// Ozmira behind two C functions that any benchmark harness can load with dlopen.
#include "draw.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <memory>

#define OZMIRA_BENCH_EXPORT extern "C" __attribute__((visibility("default")))

/// Parses NUL-terminated SVG text. 0 when done.
OZMIRA_BENCH_EXPORT int ozmira_bench_parse(const char* text) noexcept {
    ozm::SVGParser parser;
    return parser.CreateDocumentWithSVGData(text)->elements.empty() ? 1 : 0;
}

/// Parses NUL-terminated SVG text and draws it, fitted and centred, over all of `argb`: `size` * `size`
/// premultiplied pixels, bytes A R G B, row 0 the top. 0 when done.
OZMIRA_BENCH_EXPORT int ozmira_bench_render(const char* text, unsigned size, void* argb) noexcept {
    ozm::SVGParser parser;
    const std::unique_ptr<ozm::Document> document = parser.CreateDocumentWithSVGData(text);
    return bench::DrawIntoPixels(*document, size, argb) ? 0 : 1;
}
