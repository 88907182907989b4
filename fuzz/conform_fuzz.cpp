// What conforming writes is well-formed, is drawn as in a browser, and conforms to itself.
#include "require.h"

#include <Ozmira/SVG/ozmSVGParser.h>
#include <OzmiraConform/OzmiraConform.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

using namespace ozm::conform;

namespace {

bool HasDifferences(const std::vector<Finding>& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& f) { return f.severity != Severity::Note; });
}

/// Places lie in the text, in its order.
void RequirePlaces(std::string_view text, const std::vector<Finding>& findings) {
    const auto lines = 1 + static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) +
                       static_cast<size_t>(std::count(text.begin(), text.end(), '\r'));
    for (const Finding& finding : findings) {
        Require(finding.line >= 1 && finding.line <= lines);
        Require(finding.column >= 1 && finding.column <= text.size() + 1);
    }
    Require(std::is_sorted(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
        return a.line != b.line ? a.line < b.line : a.column < b.column;
    }));
}

void Try(std::string_view text, const Options& options) {
    const Result result = Conform(text, options);
    RequirePlaces(text, result.findings);
    if (result.isRefused) {
        Require(result.text.empty() && !result.findings.empty());
        return;
    }
    if (!result.isChanged) {
        Require(result.text == text);
        return;
    }
    Require(!HasDifferences(Check(result.text)));
    Require(!ozm::SVGParser().CreateDocumentWithSVGData(result.text.c_str())->elements.empty());
    const Result again = Conform(result.text, options);
    Require(!again.isRefused && !again.isChanged && again.text == result.text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    RequirePlaces(text, Check(text));
    Try(text, {});
    Options options;
    options.outlineStrokes = true;
    options.lossy = true;
    options.decimals = static_cast<int>(size % 13);
    Try(text, options);
    return 0;
}
