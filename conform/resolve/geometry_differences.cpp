// How Ozmira reads outlines.
#include "geometry/flatten.h"
#include "geometry/path_reader.h"
#include "geometry/winding.h"
#include "resolve/differences.h"
#include "source/text_places.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <algorithm>
#include <cmath>

namespace ozm::conform {
namespace {

bool IsNear(double a, double b, double tolerance) { return std::abs(a - b) <= tolerance; }

/// The rectangle that Ozmira draws.
Rectangle OzmiraRectangle(const Node& node) {
    Rectangle r{OzmiraNumber(node, Attr::X),     OzmiraNumber(node, Attr::Y),
                OzmiraNumber(node, Attr::Width), OzmiraNumber(node, Attr::Height),
                OzmiraNumber(node, Attr::Rx),    OzmiraNumber(node, Attr::Ry)};
    const bool hasX = OzmiraAttribute(node, Attr::Rx).has_value(),
               hasY = OzmiraAttribute(node, Attr::Ry).has_value();
    if (hasX && !hasY) r.ry = r.rx;
    if (hasY && !hasX) r.rx = r.ry;
    r.rx = std::min(r.rx, r.width / 2);
    r.ry = std::min(r.ry, r.height / 2);
    if (!(r.rx > 0 && r.ry > 0)) r.rx = r.ry = 0;
    return r;
}

Ellipse OzmiraEllipse(const Node& node) {
    const double cx = OzmiraNumber(node, Attr::Cx), cy = OzmiraNumber(node, Attr::Cy);
    if (node.tag == Tag::Circle) return {cx, cy, OzmiraNumber(node, Attr::R), OzmiraNumber(node, Attr::R)};
    return {cx, cy, OzmiraNumber(node, Attr::Rx), OzmiraNumber(node, Attr::Ry)};
}

} // namespace

void Differences::CompareGeometry(const Node& node, const Context& context, const Geometry& geometry) {
    switch (node.tag) {
    case Tag::Path: return ComparePathData(node, context, geometry);
    case Tag::Polyline:
    case Tag::Polygon: return ComparePoints(node);
    default: return CompareShapeSizes(node, context, geometry);
    }
}

void Differences::ComparePathData(const Node& node, const Context& context, const Geometry& geometry) {
    if (const Declaration* const style = PathDeclaration(node, m_sheets)) {
        return Report(Rule::GeometryProperty, style->offset, NameOf(Attr::D));
    }
    const Attribute* const d = node.Find(Attr::D);
    if (!d) return;
    // Nobody sees an outline that is half a pixel off in a picture of 500.
    const double tolerance = 4 * m_tolerance / std::max(1e-9, LargestScale(context.matrix));
    PathData data = geometry.data;
    if (data.error) data.path = geometry.path;
    const bool hasEntities = d->raw.data() == nullptr || d->raw.find('&') != std::string_view::npos;
    if (hasEntities) return ReportAttribute(node, Attr::D, Rule::PathSyntax);
    if (DrawsTheSame(data, d->raw, tolerance)) return;
    const auto report = [&](Rule rule, std::optional<size_t> index) {
        if (index) Report(rule, d->valueOffset + static_cast<uint32_t>(RawIndex(d->raw, *index)));
        return index.has_value();
    };
    const bool hasArc = report(Rule::Arc, data.arcs.Seen(tolerance));
    const bool hasQuadratic = report(Rule::QuadraticCurve, data.quadratics.Seen(tolerance));
    const bool isAfterClose = report(Rule::RelativeAfterZ, data.FirstPenOffset(tolerance));
    const bool isBroken = report(Rule::PathSyntax, data.error);
    if (!hasArc && !hasQuadratic && !isAfterClose && !isBroken) Report(Rule::PathSyntax, d->valueOffset);
}

void Differences::ComparePoints(const Node& node) {
    const Attribute* const attribute = node.Find(Attr::Points);
    if (!attribute) return;
    const PointList list = ReadPoints(attribute->value);
    const std::vector<double> own = SVGParser().ParsePathCommandArguments(StringView(attribute->raw));
    const bool isDropped = node.tag == Tag::Polyline && own.size() % 2 == 1;
    bool isSame = isDropped ? list.points.size() < 2 : own.size() / 2 == list.points.size();
    for (size_t i = 0; isSame && !isDropped && i < list.points.size(); ++i) {
        isSame = own[2 * i] == list.points[i].x && own[2 * i + 1] == list.points[i].y;
    }
    if (!isSame) ReportAttribute(node, Attr::Points, Rule::PointsSyntax);
}

void Differences::CompareNumber(const Node& node, Attr attr, double own, double value, double tolerance) {
    if (IsNear(own, value, tolerance)) return;
    const Attribute* const attribute = node.Find(attr);
    for (const Declaration& declaration : m_sheets.Of(node)) {
        if (declaration.property == attr)
            return Report(Rule::GeometryProperty, declaration.offset, NameOf(attr));
    }
    if (!attribute) return Report(Rule::ShapeSyntax, node.offset, node.localName);
    ReportAttribute(node, attr, Rule::Units);
}

void Differences::CompareShapeSizes(const Node& node, const Context& context, const Geometry& geometry) {
    const double tolerance = m_tolerance / 10 / std::max(1e-9, LargestScale(context.matrix));
    const auto compare = [&](Attr attr, double own, double value) {
        CompareNumber(node, attr, own, value, tolerance);
    };
    if (const Rectangle* const r = std::get_if<Rectangle>(&geometry.primitive)) {
        const Rectangle own = OzmiraRectangle(node);
        compare(Attr::X, own.x, r->x);
        compare(Attr::Y, own.y, r->y);
        compare(Attr::Width, own.width, r->width);
        compare(Attr::Height, own.height, r->height);
        const bool isRound = r->rx > 0 && r->ry > 0;
        compare(Attr::Rx, own.rx, isRound ? r->rx : 0);
        compare(Attr::Ry, own.ry, isRound ? r->ry : 0);
    } else if (const Ellipse* const e = std::get_if<Ellipse>(&geometry.primitive)) {
        const Ellipse own = OzmiraEllipse(node);
        compare(Attr::Cx, own.cx, e->cx);
        compare(Attr::Cy, own.cy, e->cy);
        const bool isCircle = node.tag == Tag::Circle;
        compare(isCircle ? Attr::R : Attr::Rx, own.rx, e->rx);
        if (!isCircle) compare(Attr::Ry, own.ry, e->ry);
    } else if (node.tag == Tag::Line) {
        const std::vector<Point>& points = geometry.path.Points();
        if (points.size() != 2) return;
        compare(Attr::X1, OzmiraNumber(node, Attr::X1), points[0].x);
        compare(Attr::Y1, OzmiraNumber(node, Attr::Y1), points[0].y);
        compare(Attr::X2, OzmiraNumber(node, Attr::X2), points[1].x);
        compare(Attr::Y2, OzmiraNumber(node, Attr::Y2), points[1].y);
    } else {
        CompareNothing(node, context);
    }
}

void Differences::CompareNothing(const Node& node, const Context& context) {
    // A browser draws nothing. Ozmira fills nothing without an area, but strokes and mirrors.
    double width = 0, height = 0;
    bool isHidden = false;
    if (node.tag == Tag::Rect) {
        width = OzmiraNumber(node, Attr::Width);
        height = OzmiraNumber(node, Attr::Height);
        isHidden = (width == 0 && OzmiraAttribute(node, Attr::Width)) ||
                   (height == 0 && OzmiraAttribute(node, Attr::Height));
    } else {
        const Ellipse own = OzmiraEllipse(node);
        width = own.rx;
        height = own.ry;
        isHidden = node.tag == Tag::Ellipse && ((width == 0 && OzmiraAttribute(node, Attr::Rx)) ||
                                                (height == 0 && OzmiraAttribute(node, Attr::Ry)));
    }
    // Any `visibility` makes Ozmira draw what a size of 0 hides.
    const std::string_view style = node.Get(Attr::Style);
    if (node.Has(Attr::Visibility) || style.find("visibility") != std::string_view::npos) isHidden = false;
    if (isHidden || (width == 0 && height == 0)) return;
    const bool hasArea = width != 0 && height != 0;
    const OzmiraStyle& own = context.ozmira;
    const bool isFilled = hasArea && (own.HasFill() || !own.fillReference.empty());
    if (isFilled || (own.HasStroke() && own.strokeWidth > 0)) {
        Report(Rule::ShapeSyntax, node.offset, node.localName);
    }
}

void Differences::CompareClipParts(const Node& clipPath, const Context& context,
                                   const std::vector<ClipPart>& parts) {
    // Ozmira adds up the outlines of all shapes, each with its own transform only.
    Path own;
    bool isKnown = true;
    for (const Node* child = clipPath.firstChild; child; child = child->nextSibling) {
        if (!child->isPlain || (!IsShape(child->tag) && child->tag != Tag::Use)) continue;
        isKnown &= AddOzmiraClip(*child, context.matrix, own);
    }
    Path whole;
    bool isCut = clipPath.Has(Attr::ClipPath);
    for (const ClipPart& part : parts) {
        whole.Append(part.path);
        isCut |= part.clip != nullptr;
    }
    bool isSame = isKnown && !isCut && own.Verbs() == whole.Verbs();
    for (size_t i = 0; isSame && i < own.Points().size(); ++i) {
        isSame = Distance(own.Points()[i], whole.Points()[i]) <= m_tolerance * 2;
    }
    if (!isSame) return Report(Rule::ClipPath, clipPath.offset);
    if (!IsUnionUnderNonZero(parts)) Report(Rule::ClipRule, clipPath.offset);
}

bool Differences::AddOzmiraClip(const Node& node, const Matrix& matrix, Path& out) {
    const auto transform = OzmiraAttribute(node, Attr::Transform);
    const Matrix inner = transform ? matrix * OzmiraTransform(*transform) : matrix;
    if (node.tag == Tag::Use) {
        const Node* const target = m_document.FindById(node.LocalReference());
        bool isFound = false;
        for (const Attribute& attribute : node.attributes) isFound |= attribute.name == "xlink:href";
        if (!isFound || !target || !IsShape(target->tag) || !IsInOzmiraTree(*target)) return false;
        return AddOzmiraClip(
            *target, inner * Matrix::Translation(OzmiraNumber(node, Attr::X), OzmiraNumber(node, Attr::Y)),
            out);
    }
    Path path;
    switch (node.tag) {
    case Tag::Rect: path = PathOf(OzmiraRectangle(node)); break;
    case Tag::Circle:
    case Tag::Ellipse: path = PathOf(OzmiraEllipse(node)); break;
    case Tag::Path: {
        const auto d = OzmiraAttribute(node, Attr::D);
        if (!d) return true;
        const PathData data = ReadPath(*d);
        if (!DrawsTheSame(data, *d, m_tolerance / std::max(1e-9, LargestScale(inner)))) return false;
        path = data.path;
        break;
    }
    case Tag::Line:
        path = LinePath({OzmiraNumber(node, Attr::X1), OzmiraNumber(node, Attr::Y1)},
                        {OzmiraNumber(node, Attr::X2), OzmiraNumber(node, Attr::Y2)});
        break;
    default: {
        const auto points = OzmiraAttribute(node, Attr::Points);
        const PointList list = points ? ReadPoints(*points) : PointList{};
        if (list.error || list.isOdd) return false;
        path = PolyPath(list.points, node.tag == Tag::Polygon);
        break;
    }
    }
    path.Transform(inner);
    out.Append(path);
    return true;
}

bool Differences::IsUnionUnderNonZero(const std::vector<ClipPart>& parts) const {
    for (const ClipPart& part : parts) {
        if (part.rule == FillRule::EvenOdd && !RulesAgree(part.path, m_tolerance)) return false;
    }
    int direction = 0;
    std::vector<Box> boxes;
    bool isTouching = false;
    for (const ClipPart& part : parts) {
        const Box box = BoxOf(part.path);
        for (const Box& other : boxes) isTouching |= other.Overlaps(box);
        boxes.push_back(box);
    }
    if (!isTouching) return true;
    // Outlines that all run one way only add up.
    for (const ClipPart& part : parts) {
        for (const Polyline& outline : Flatten(part.path, m_tolerance)) {
            const int own = SignedArea(outline) >= 0 ? 1 : -1;
            if (direction != 0 && direction != own) return false;
            direction = own;
        }
    }
    return true;
}

} // namespace ozm::conform
