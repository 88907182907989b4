#pragma once

#include "resolve/context.h"
#include "resolve/geometry.h"
#include "rules/finding_list.h"
#include "subset/ozmira_values.h"

#include <string_view>
#include <vector>

namespace ozm::conform {

/// One shape in a clip path.
struct ClipPart {
    Path path; ///< In the drawing's coordinates.
    FillRule rule = FillRule::NonZero;
    const Clip* clip = nullptr; ///< What it is cut to.
};

/// Compares what a browser makes of each element with what Ozmira makes of it, and reports where they part.
/// All of it is about elements that Ozmira draws (`Context::isSeen`).
class Differences {
public:
    Differences(const Document& document, FindingList& findings, StyleSheets& sheets)
        : m_document(document), m_findings(findings), m_sheets(sheets) {}

    /// A tolerance in the drawing's coordinates.
    void SetTolerance(double tolerance) { m_tolerance = tolerance; }
    /// While muted, nothing is reported.
    void SetMuted(bool isMuted) { m_isMuted = isMuted; }
    bool IsMuted() const { return m_isMuted; }

    void Report(Rule rule, uint32_t offset, std::string_view detail = {});
    /// Reports a property that Ozmira reads otherwise: where it is set, and why. `rule` is for values that
    /// are written plainly but not understood.
    void ReportProperty(Attr property, const Declaration* source, Rule rule, uint32_t otherwise);
    /// Likewise for an attribute.
    void ReportAttribute(const Node& node, Attr attr, Rule rule);

    void CompareFrame(const Node& root, const Box& box, double width, double height);
    /// The drawing has no size to a browser.
    void CompareUnknownFrame(const Node& root);
    void CompareDisplay(const Node& node, const Context& context, bool isHiddenForOzmira);
    void CompareOpacity(const Node& node, const Context& context, double opacityForOzmira);
    /// `local` is what a browser makes of the element's transform.
    void CompareTransform(const Node& node, const Context& context, const Matrix& local);
    void CompareGeometry(const Node& node, const Context& context, const Geometry& geometry);
    void ComparePaints(const Node& node, const Context& context, const Shape& shape);
    void CompareUse(const Node& node, const Context& context, const Node* target, Point offset);
    /// `node` is a `use` that names nothing to a browser.
    void CompareMissingUse(const Node& node);
    void CompareClips(const Node& node, const Context& context, const Node* clipPath,
                      const std::vector<std::string_view>& clipsForOzmira);
    /// Compares the outlines that a clip path is made of; `context` is that of what it clips.
    void CompareClipParts(const Node& clipPath, const Context& context, const std::vector<ClipPart>& parts);

private:
    void ComparePathData(const Node& node, const Context& context, const Geometry& geometry);
    void ComparePoints(const Node& node);
    void CompareNumber(const Node& node, Attr attr, double own, double value, double tolerance);
    void CompareShapeSizes(const Node& node, const Context& context, const Geometry& geometry);
    void CompareNothing(const Node& node, const Context& context);
    /// Adds what Ozmira makes of a shape in a clip path; false when that can't be what a browser makes of it.
    bool AddOzmiraClip(const Node& node, const Matrix& matrix, Path& out);
    /// True when the outlines of all parts together cover under the nonzero rule what the parts cover.
    bool IsUnionUnderNonZero(const std::vector<ClipPart>& parts) const;
    void CompareFill(const Node& node, const Context& context, const Shape& shape);
    void CompareStroke(const Node& node, const Context& context, const Shape& shape);
    void CompareGradient(const Node& node, const Context& context, const Shape& shape, const Node& gradient);

    const Document& m_document;
    FindingList& m_findings;
    StyleSheets& m_sheets;
    double m_tolerance = 0.01;
    bool m_isMuted = false;
};

} // namespace ozm::conform
