#pragma once

#include "resolve/context.h"
#include "resolve/differences.h"
#include "resolve/geometry.h"
#include "resolve/template_chain.h"
#include "rules/finding_list.h"
#include "source/document.h"
#include "style/style_sheets.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace ozm::conform {

/// Walks a drawing as a browser draws it, follows every reference, and turns it into a scene. On the way it
/// notes where Ozmira does otherwise.
class Walker {
public:
    Walker(const Document& document, FindingList& findings);

    Scene Walk();

private:
    using ContextPointer = std::unique_ptr<Context>;

    // The tree: walk.cpp

    void SetUpFrame(Scene& scene, Context& context);
    /// Takes the size of a drawing that gives none from what is painted.
    static void FitToContent(Scene& scene);
    /// The context of an element for its children, with its style, transform, clip, mask and opacity; null
    /// when nothing of it is drawn.
    ContextPointer Enter(const Node& node, const Context& parent);
    /// Counts what takes time; false, and a finding, once that is too much.
    bool CountVisit(const Node& node);
    bool PassesConditions(const Node& node) const;
    // The steps of `Enter`; false when nothing is drawn.
    bool EnterDisplay(const Node& node, const OzmiraElement& element, Context& context);
    bool EnterTransform(const Node& node, Context& context);
    /// The transform that the element has by its properties; the root's is about the middle of the drawing.
    Matrix TransformOf(const Node& node, const Context& context);
    /// Paints the root's background.
    void EmitBackground(const Node& root, const Context& context);
    /// Reports values that only a browser can compute.
    void ReportComputed(const Node& node, const ComputedStyle& style);
    bool EnterClipPath(const Node& node, const OzmiraElement& element, Context& context);
    /// Applies clip path, mask and filter; false when they hide everything.
    bool EnterEffects(const Node& node, Context& context);
    void EnterGroup(const Node& node, double opacity, Context& context);
    void Visit(const Node& node, const Context& parent);
    void VisitChildren(const Node& node, const Context& context);
    void VisitSwitch(const Node& node, const Context& parent);
    void VisitUse(const Node& node, const Context& parent);
    /// A `svg` inside another, or a `symbol` or `svg` that a `use` element (else null) refers to.
    void VisitViewport(const Node& node, const Node* use, const Context& parent);
    /// The paints of a `use` element for what it refers to.
    ContextPaints ContextPaintsOf(const Node& node, const Context& context);
    void VisitLeftOut(const Node& node, const Context& parent);

    // Shapes and their paints: shape.cpp, paint.cpp, gradient.cpp, pattern.cpp, marker.cpp

    void VisitShape(const Node& node, const Context& parent);
    Shape MakeShape(const Node& node, const Context& context, Geometry geometry);
    void SetPen(const Context& context, Shape& shape);
    /// Gives the stroke the width in pixels that it keeps whatever the transform.
    void KeepStrokeWidth(Shape& shape) const;
    void SetPaints(const Node& node, const Context& context, Shape& shape);
    /// Adds the shape to the scene: fill, stroke and markers in their order.
    /// `arcJoints`: the verbs of the path that end within an arc.
    void EmitShape(const Node& node, const Shape& shape, std::span<const size_t> arcJoints,
                   const Context& context);
    void EmitPatternPart(PaintPart part, const Node& pattern, const Shape& shape, const Context& context);
    void EmitPart(PaintPart part, const Shape& shape, const Context& context);
    Paint PaintOf(const PaintValue& value, double alpha, const Path& path, const Context& context);
    Paint PlainPaint(PaintValue::Kind kind, const Color& color, double alpha, const Context& context) const;
    /// The pattern that paints a path; null where it has no tiles for it.
    const Node* FindPattern(const PaintValue& value, const Path& path, const Context& context);
    bool HasTiles(const Node& pattern, const Path& path, const Context& context);
    /// None where the path has no box to place the gradient in.
    std::optional<Paint> PlaceGradient(const Node& node, double alpha, const Path& path,
                                       const Context& context);
    /// The transform of a gradient or pattern, from an attribute or a style sheet, about its
    /// `transform-origin`.
    Matrix TemplateTransform(const TemplateChain& chain, Attr attr, bool isUserSpace, const Context& context);
    std::vector<GradientStop> ReadStops(const Node& node, const Context& context);
    void EmitPattern(const Node& pattern, const Shape& area, double alpha, const Context& context);
    void EmitMarkers(const Shape& shape, std::span<const size_t> arcJoints, const Context& context);
    void EmitMarker(const Node& marker, Point place, double angle, bool isStart, const Shape& shape,
                    const Context& context);
    /// The style that an element has where it stands, for what is drawn elsewhere.
    const ComputedStyle& StyleInPlace(const Node& node);
    /// A context for content that is drawn elsewhere: of patterns, markers, masks and clip paths.
    ContextPointer ContentContext(const Node& node, const Context& user);

    // Clip paths, masks and filters: clip.cpp, mask.cpp, filter.cpp

    /// Adds the clip path to the context; false when nothing is left of what it clips.
    bool ApplyClip(const Node& clipPath, const Node& node, Context& context, bool isCompared);
    void CollectClipParts(const Node& node, const Context& parent, std::vector<ClipPart>& parts);
    void CollectClipUse(const Node& node, const Context& context, std::vector<ClipPart>& parts);
    Path UnionOf(std::vector<ClipPart>& parts);
    const Clip* AddClip(Path path, const Clip* outer, bool isRectangle);
    const Clip* AddRectangleClip(const Box& box, const Matrix& matrix, const Clip* outer);
    /// Cuts to what the mask lets through, and returns how much of it; none when that is nothing.
    std::optional<double> ApplyMask(const Node& mask, const Node& node, Context& context);
    /// Applies the mask that a mask itself has, if any; `reference` is the one to that mask.
    std::optional<double> ApplyOuterMask(const ReferenceValue& outer, const Node& node,
                                         const Reference& reference, Context& context);
    /// Cuts to areas that let different shares through, and returns the share where there is one alone.
    std::optional<double> CutToMask(std::vector<MaskLevel> levels, const Box& region, const Node& node,
                                    Context& context);
    /// Applies a `filter` element (null: functions) to the colours in it; false when it hides everything.
    bool ApplyFilter(const Node& node, const Node* filter, Context& context);
    void CutToRegion(const Node& node, const Node& element, Context& context);

    /// What curves may deviate from arcs in an element's coordinates.
    double ArcTolerance(const Context& context) const {
        return m_scene->Tolerance() / 2 / std::max(1e-9, LargestScale(context.matrix));
    }

    /// The box of an element's fills in its own coordinates, as gradients, clip paths and masks refer to it.
    Box ObjectBox(const Node& node, const Context& context);

    const Document& m_document;
    StyleSheets m_sheets;
    FindingList& m_findings;
    Differences m_differences;
    Scene* m_scene = nullptr;
    const bool m_hasContextPaints; ///< The text has a "context-fill" or "context-stroke" somewhere.
    std::unordered_map<const Node*, ComputedStyle> m_stylesInPlace;
    uint32_t m_visits = 0, m_maskCount = 0;
    size_t m_segments = 0;
    double m_unitsPerPixel = 1; ///< At the size that the drawing gives itself.
    bool m_isSizeUnknown = false, m_isTooLarge = false;
    bool m_isMeasuring =
        false; ///< Only boxes are wanted: what is not painted counts, and nothing is reported.
};

} // namespace ozm::conform
