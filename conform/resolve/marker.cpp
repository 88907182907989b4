// Markers at the vertices of paths.
#include "base/limits.h"
#include "geometry/css_units.h"
#include "geometry/text.h"
#include "resolve/viewport.h"
#include "resolve/walker.h"

#include <cmath>
#include <numbers>
#include <optional>
#include <span>

namespace ozm::conform {
namespace {

/// A point of a path where a marker may stand, with the directions in which the path comes and goes.
struct Vertex {
    Point place;
    std::optional<Point> in, out;
};

/// The first difference between neighbours that has a length.
std::optional<Point> FirstDirection(std::initializer_list<Point> points) {
    for (auto at = points.begin() + 1; at != points.end(); ++at) {
        if (*at != *points.begin()) return *at - *points.begin();
    }
    return {};
}

/// The vertices of a path; verbs among `joints` end in none.
std::vector<Vertex> VerticesOf(const Path& path, std::span<const size_t> joints) {
    std::vector<Vertex> vertices;
    size_t first = 0, verb = 0;
    auto joint = joints.begin();
    bool isInArc = false;
    Segment segment;
    for (Segments segments(path); segments.Next(segment); ++verb) {
        const Point(&p)[4] = segment.points;
        std::optional<Point> in, out;
        switch (segment.verb) {
        case Verb::Move:
            first = vertices.size();
            vertices.push_back({p[0], {}, {}});
            continue;
        case Verb::Line:
        case Verb::Close: in = out = FirstDirection({p[0], p[1]}); break;
        case Verb::Cubic:
            out = FirstDirection({p[0], p[1], p[2], p[3]});
            if (const std::optional<Point> back = FirstDirection({p[3], p[2], p[1], p[0]})) in = -*back;
            break;
        }
        if (!isInArc) vertices.back().out = out;
        isInArc = joint != joints.end() && *joint == verb;
        if (isInArc) {
            ++joint;
            continue;
        }
        vertices.push_back({segment.End(), in, {}});
        if (segment.verb == Verb::Close) {
            vertices.back().out = vertices[first].out;
            vertices[first].in = in;
        }
    }
    return vertices;
}

double AngleOf(Point direction) { return std::atan2(direction.y, direction.x); }

/// The direction halfway between those in which the path comes and goes.
double AngleOf(const Vertex& vertex) {
    const std::optional<Point> in = vertex.in ? vertex.in : vertex.out;
    const std::optional<Point> out = vertex.out ? vertex.out : vertex.in;
    if (!in || !out) return 0;
    const double from = AngleOf(*in);
    return from + std::remainder(AngleOf(*out) - from, 2 * std::numbers::pi) / 2;
}

/// An angle of `orient`, in radians; 0 if it is not valid.
double ReadAngle(std::string_view text) {
    text = Trim(text);
    const char* p = text.data();
    const char* const end = p + text.size();
    double angle = 0;
    if (!ReadNumber(p, end, angle)) return 0;
    const std::string_view unit(p, static_cast<size_t>(end - p));
    return angle * kRadiansPerDegree * (unit.empty() ? 1 : AngleUnit(unit).value_or(0));
}

/// The reference point of a marker along one axis, in its content's coordinates.
double ReferencePoint(std::string_view text, double whole) {
    text = Trim(text);
    if (text == "center") return whole / 2;
    if (text == "right" || text == "bottom") return whole;
    const std::optional<CssLength> length = ReadLength(text);
    return length ? Resolve(*length, {whole, 16, 16}) : 0; // also for "left" and "top"
}

/// The angle at which a marker stands where the path has a direction.
double MarkerAngle(const Node& marker, double direction, bool isStart) {
    const std::string_view orient = Trim(marker.Get(Attr::Orient));
    if (orient == "auto" || (orient == "auto-start-reverse" && !isStart)) return direction;
    return orient == "auto-start-reverse" ? direction + std::numbers::pi : ReadAngle(orient);
}

} // namespace

void Walker::EmitMarkers(const Shape& shape, std::span<const size_t> arcJoints, const Context& context) {
    const ComputedStyle& style = context.style;
    const auto find = [&](const ReferenceValue& value) -> const Node* {
        if (value.kind != ReferenceValue::Kind::Local) return nullptr;
        const Node* const node = m_document.FindById(value.id);
        return node && node->tag == Tag::Marker && !context.IsFollowing(*node) ? node : nullptr;
    };
    const Node* const start = find(style.markerStart);
    const Node* const middle = find(style.markerMid);
    const Node* const end = find(style.markerEnd);
    if (!start && !middle && !end) return;
    if (context.isSeen) m_differences.Report(Rule::Marker, shape.origin->offset);
    const std::vector<Vertex> vertices = VerticesOf(shape.path, arcJoints);
    for (size_t i = 0; i < vertices.size(); ++i) {
        const bool isStart = i == 0, isEnd = i + 1 == vertices.size();
        const double angle = AngleOf(vertices[i]);
        if (isStart && start) EmitMarker(*start, vertices[i].place, angle, true, shape, context);
        if (!isStart && !isEnd && middle)
            EmitMarker(*middle, vertices[i].place, angle, false, shape, context);
        if (isEnd && end) EmitMarker(*end, vertices[i].place, angle, false, shape, context);
    }
}

void Walker::EmitMarker(const Node& marker, Point place, double angle, bool isStart, const Shape& shape,
                        const Context& context) {
    const Reference reference{&marker, context.references};
    const ContextPointer content = ContentContext(marker, context);
    content->references = &reference;
    content->clip = context.clip;
    if (content->depth > kMaximumMarkerDepth) return;
    content->contextPaints = {shape.fill, shape.stroke, FindPattern(context.style.fill, shape.path, context),
                              FindPattern(context.style.stroke, shape.path, context), shape.matrix};
    if (!content->style.isDisplayed) return;
    const auto length = [&](Attr attr, double otherwise, const LengthBase& base) {
        const std::optional<CssLength> read = ReadLength(marker.Get(attr));
        return read ? Resolve(*read, base) : otherwise;
    };
    const double width = length(Attr::MarkerWidth, 3, context.BaseX());
    const double height = length(Attr::MarkerHeight, 3, context.BaseY());
    if (!(width > 0 && height > 0)) return;

    Matrix matrix = shape.matrix * Matrix::Translation(place.x, place.y) *
                    Matrix::Rotation(MarkerAngle(marker, angle, isStart));
    if (marker.Get(Attr::MarkerUnits) != "userSpaceOnUse") {
        matrix = matrix * Matrix::Scaling(shape.pen.width, shape.pen.width);
    }
    Box shown = Box::OfSize(0, 0, width, height);
    const std::optional<Box> viewBox = ReadViewBox(marker.Get(Attr::ViewBox));
    Matrix fit;
    if (viewBox) {
        fit = FitViewBox(*viewBox, shown, ReadAspectRatio(marker.Get(Attr::PreserveAspectRatio)));
        content->viewWidth = viewBox->Width();
        content->viewHeight = viewBox->Height();
    } else {
        content->viewWidth = width;
        content->viewHeight = height;
    }
    const Point point = fit.Map({ReferencePoint(marker.Get(Attr::RefX), content->viewWidth),
                                 ReferencePoint(marker.Get(Attr::RefY), content->viewHeight)});
    matrix = matrix * Matrix::Translation(-point.x, -point.y);
    if (!content->style.isOverflowVisible) content->clip = AddRectangleClip(shown, matrix, content->clip);
    content->matrix = matrix * fit;
    if (content->matrix.Determinant() == 0) return;
    content->style.markerStart = content->style.markerMid = content->style.markerEnd = {};
    if (content->style.opacity < 1) EnterGroup(marker, content->style.opacity, *content);
    VisitChildren(marker, *content);
}

} // namespace ozm::conform
