#include <OzmiraConform/OzmiraConform.h>

#include "resolve/walker.h"
#include "rules/finding_list.h"
#include "source/document.h"
#include "split/splitter.h"
#include "write/drawing_writer.h"

#include <utility>

namespace ozm::conform {
namespace {

/// Reports why a text is no drawing; true when it is none.
bool ReportFault(const Document& document, FindingList& findings) {
    switch (document.Fault()) {
    case XMLFault::None: return false;
    case XMLFault::IllFormed:
        findings.Add(Rule::IllFormed, document.FaultOffset(), document.FaultMessage());
        break;
    case XMLFault::TooDeep: findings.Add(Rule::TooDeep, document.FaultOffset()); break;
    case XMLFault::TooLarge: findings.Add(Rule::TooLarge, 0); break;
    case XMLFault::NoSVG: findings.Add(Rule::NoSvg, document.FaultOffset()); break;
    }
    return true;
}

} // namespace

std::vector<Finding> Check(std::string_view svg) {
    FindingList findings;
    const Document document(svg);
    if (!ReportFault(document, findings)) {
        Scene scene = Walker(document, findings).Walk();
        Splitter(scene, findings).Split(scene.root);
        if (!document.IsUTF8()) findings.Add(Rule::Encoding, 0);
    }
    return findings.Take(svg);
}

Result Conform(std::string_view svg, const Options& options) {
    Result result;
    FindingList findings;
    const Document document(svg);
    if (ReportFault(document, findings)) {
        result.isRefused = true;
        result.findings = findings.Take(svg);
        return result;
    }
    Scene scene = Walker(document, findings).Walk();
    Splitter splitter(scene, findings);
    splitter.SetOutlineStrokes(options.outlineStrokes);
    const std::vector<Shape> shapes = splitter.Split(scene.root);
    if (!document.IsUTF8()) findings.Add(Rule::Encoding, 0);
    const bool hasStrokes = options.outlineStrokes && splitter.HasOutlined();
    result.isRefused = findings.HasRefusals() && !options.lossy;
    if (!result.isRefused && (findings.HasDifferences() || hasStrokes)) {
        result.text = WriteDrawing(document, scene, shapes, options);
        if (result.text.empty()) {
            findings.Add(Rule::TooLarge, 0);
            result.isRefused = true;
        }
        result.isChanged = !result.isRefused && result.text != svg;
    } else if (!result.isRefused) {
        result.text = svg;
    }
    result.findings = findings.Take(svg);
    return result;
}

} // namespace ozm::conform
