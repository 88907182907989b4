#include "write/gradient_writer.h"

#include "base/limits.h"
#include "geometry/number_text.h"
#include "geometry/transform_reader.h"
#include "write/attributes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ozm::conform {
namespace {

void WriteAttribute(std::string& out, std::string_view name, double value, int decimals) {
    std::string text;
    WriteNumber(value, decimals, text);
    AppendAttribute(out, name, text);
}

void WriteExactAttribute(std::string& out, std::string_view name, double value) {
    std::string text;
    WriteSignificant(value, 7, 15, text);
    AppendAttribute(out, name, text);
}

/// How often the gradient's own way fits before its start and up to its last point in the box.
struct Repetitions {
    int first = 0, last = 1;
};

Repetitions RepetitionsOver(const Gradient& gradient, const Matrix& matrix, const Box& box) {
    const std::optional<Matrix> inverse = Inverse(matrix);
    Repetitions range;
    if (!inverse) return range;
    double first = 0, last = 1;
    for (const Point corner : {Point{box.left, box.top}, Point{box.right, box.top},
                               Point{box.left, box.bottom}, Point{box.right, box.bottom}}) {
        const Point p = inverse->Map(corner);
        if (gradient.isRadial) {
            const double reach = gradient.radius - Distance(gradient.center, gradient.focus);
            last = std::max(last, Distance(p, gradient.focus) / std::max(reach, gradient.radius * 1e-3));
        } else {
            const Point way = gradient.end - gradient.start;
            const double t = Dot(p - gradient.start, way) / Dot(way, way);
            first = std::min(first, t);
            last = std::max(last, t);
        }
    }
    range.first = static_cast<int>(std::max(std::floor(first), -kMaximumRepetitions / 2.0));
    range.last = static_cast<int>(std::min(std::ceil(last), kMaximumRepetitions / 2.0));
    return range;
}

/// The gradient with its stops repeated as far as the box reaches.
Gradient Repeated(const Gradient& gradient, const Matrix& matrix, const Box& box) {
    const Repetitions range = RepetitionsOver(gradient, matrix, box);
    Gradient repeated = gradient;
    repeated.stops.clear();
    const int count = range.last - range.first;
    for (int i = range.first; i < range.last; ++i) {
        std::vector<GradientStop> stops = gradient.stops;
        if (gradient.spread == GradientSpread::Reflect && i % 2 != 0) {
            std::reverse(stops.begin(), stops.end());
            for (GradientStop& stop : stops) stop.offset = 1 - stop.offset;
        }
        // The colour up to the first stop, and that after the last, are part of each repetition.
        if (stops.front().offset > 0) stops.insert(stops.begin(), {0, stops.front().color});
        if (stops.back().offset < 1) stops.push_back({1, stops.back().color});
        for (GradientStop& stop : stops) {
            repeated.stops.push_back({(i - range.first + stop.offset) / count, stop.color});
        }
    }
    if (gradient.isRadial) {
        repeated.radius = gradient.radius * range.last;
        repeated.center = Mix(gradient.focus, gradient.center, range.last);
    } else {
        repeated.start = Mix(gradient.start, gradient.end, range.first);
        repeated.end = Mix(gradient.start, gradient.end, range.last);
    }
    return repeated;
}

/// The gradient with a focal circle turned into stops, which is exact for concentric circles.
Gradient WithoutFocalRadius(Gradient gradient) {
    if (gradient.focalRadius > gradient.radius) {
        // The way leads inwards, from the focal circle to the smaller one.
        const double way = 1 - gradient.radius / gradient.focalRadius;
        gradient.radius = std::exchange(gradient.focalRadius, 0);
        for (GradientStop& stop : gradient.stops) stop.offset = 1 - way * stop.offset;
        std::reverse(gradient.stops.begin(), gradient.stops.end());
        return gradient;
    }
    const double share = std::clamp(gradient.focalRadius / gradient.radius, 0.0, 1.0);
    for (GradientStop& stop : gradient.stops) stop.offset = share + (1 - share) * stop.offset;
    gradient.stops.insert(gradient.stops.begin(), {0, gradient.stops.front().color});
    gradient.focalRadius = 0;
    return gradient;
}

std::string StopsOf(const Gradient& gradient) {
    std::string out;
    for (const GradientStop& stop : gradient.stops) {
        out += "<stop offset=\"";
        WriteNumber(stop.offset, 5, out);
        out += "\" stop-color=\"";
        WriteColor(stop.color, out);
        out += '"';
        if (stop.color.alpha < 1) WriteAttribute(out, "stop-opacity", stop.color.alpha, 3);
        out += "/>";
    }
    return out;
}

} // namespace

std::string GradientWriter::LinearAttributes(const Gradient& gradient, const Matrix& matrix) const {
    const LinearVector vector = MapLinearGradient(matrix, {gradient.start, gradient.end});
    std::string out;
    WriteAttribute(out, "x1", vector.start.x, m_decimals + 1);
    WriteAttribute(out, "y1", vector.start.y, m_decimals + 1);
    WriteAttribute(out, "x2", vector.end.x, m_decimals + 1);
    WriteAttribute(out, "y2", vector.end.y, m_decimals + 1);
    return out;
}

std::string GradientWriter::RadialAttributes(const Gradient& gradient, const Matrix& matrix) const {
    std::string out;
    const bool hasFocus = gradient.focus != gradient.center;
    if (const std::optional<double> scale = SimilarityScale(matrix)) {
        const Point center = matrix.Map(gradient.center), focus = matrix.Map(gradient.focus);
        WriteAttribute(out, "cx", center.x, m_decimals + 1);
        WriteAttribute(out, "cy", center.y, m_decimals + 1);
        WriteAttribute(out, "r", gradient.radius * *scale, m_decimals + 1);
        if (!hasFocus) return out;
        WriteAttribute(out, "fx", focus.x, m_decimals + 1);
        WriteAttribute(out, "fy", focus.y, m_decimals + 1);
        return out;
    }
    WriteExactAttribute(out, "cx", gradient.center.x);
    WriteExactAttribute(out, "cy", gradient.center.y);
    WriteExactAttribute(out, "r", gradient.radius);
    if (hasFocus) {
        WriteExactAttribute(out, "fx", gradient.focus.x);
        WriteExactAttribute(out, "fy", gradient.focus.y);
    }
    const double extent = std::abs(gradient.center.x) + std::abs(gradient.center.y) + gradient.radius;
    std::string transform;
    WriteTransform(matrix, m_decimals + 1, extent, transform);
    if (!transform.empty()) out += " gradientTransform=\"" + transform + '"';
    return out;
}

const std::string& GradientWriter::IdOf(const Gradient& gradient, const Matrix& inverse) {
    const Matrix matrix = inverse * gradient.matrix;
    Gradient placed = gradient;
    if (gradient.spread != GradientSpread::Pad) {
        placed = Repeated(gradient, gradient.matrix, m_viewBox);
    } else if (gradient.isRadial && gradient.focalRadius > 0) {
        placed = WithoutFocalRadius(gradient);
    }
    const std::string attributes =
        placed.isRadial ? RadialAttributes(placed, matrix) : LinearAttributes(placed, matrix);
    const std::string_view tag = placed.isRadial ? "radialGradient" : "linearGradient";
    std::string body(tag);
    body += attributes;
    body += StopsOf(placed);
    std::string& id = m_ids[body];
    if (!id.empty()) return id;
    id = "g" + std::to_string(m_ids.size());
    m_definitions += '<';
    m_definitions += tag;
    m_definitions += " id=\"" + id + "\" gradientUnits=\"userSpaceOnUse\"" + attributes + '>';
    m_definitions += StopsOf(placed);
    m_definitions += "</";
    m_definitions += tag;
    m_definitions += '>';
    return id;
}

} // namespace ozm::conform
