#include "geometry/path.h"

#include <algorithm>

namespace ozm::conform {

void Path::MoveTo(Point p) {
    m_verbs.push_back(Verb::Move);
    m_points.push_back(p);
    m_start = p;
    m_isClosed = false;
}

void Path::BeginSegment() {
    if (m_isClosed) MoveTo(Pen());
}

void Path::LineTo(Point p) {
    BeginSegment();
    m_verbs.push_back(Verb::Line);
    m_points.push_back(p);
}

void Path::CubicTo(Point control1, Point control2, Point end) {
    BeginSegment();
    m_verbs.push_back(Verb::Cubic);
    m_points.push_back(control1);
    m_points.push_back(control2);
    m_points.push_back(end);
}

void Path::QuadraticTo(Point control, Point end) {
    const Point start = Pen();
    CubicTo(start + (control - start) * (2.0 / 3), end + (control - end) * (2.0 / 3), end);
}

void Path::Close() {
    if (m_isClosed) return;
    m_verbs.push_back(Verb::Close);
    m_isClosed = true;
}

void Path::Append(const Path& path) {
    m_verbs.insert(m_verbs.end(), path.m_verbs.begin(), path.m_verbs.end());
    m_points.insert(m_points.end(), path.m_points.begin(), path.m_points.end());
    if (path.IsEmpty()) return;
    m_start = path.m_start;
    m_isClosed = path.m_isClosed;
}

void Path::Clear() { *this = Path(); }

void Path::Reserve(size_t verbs, size_t points) {
    m_verbs.reserve(verbs);
    m_points.reserve(points);
}

void Path::Transform(const Matrix& matrix) {
    for (Point& p : m_points) p = matrix.Map(p);
    m_start = matrix.Map(m_start);
}

bool Segments::Next(Segment& segment) {
    if (m_verb == m_path.Verbs().size()) return false;
    segment.verb = m_path.Verbs()[m_verb++];
    segment.points[0] = m_pen;
    const Point* const points = m_path.Points().data() + m_point;
    switch (segment.verb) {
    case Verb::Move:
        segment.points[0] = m_pen = m_start = points[0];
        m_point += 1;
        break;
    case Verb::Line:
        segment.points[1] = m_pen = points[0];
        m_point += 1;
        break;
    case Verb::Cubic:
        std::copy_n(points, 3, segment.points + 1);
        m_pen = points[2];
        m_point += 3;
        break;
    case Verb::Close: segment.points[1] = m_pen = m_start; break;
    }
    return true;
}

Path Transformed(Path path, const Matrix& matrix) {
    path.Transform(matrix);
    return path;
}

namespace {

void AddSegment(const Segment& segment, Path& path) {
    switch (segment.verb) {
    case Verb::Move: path.MoveTo(segment.points[0]); break;
    case Verb::Line: path.LineTo(segment.points[1]); break;
    case Verb::Cubic: path.CubicTo(segment.points[1], segment.points[2], segment.points[3]); break;
    case Verb::Close: path.Close(); break;
    }
}

/// Appends a subpath, drawn backwards.
void AppendReversed(const std::vector<Segment>& segments, bool isClosed, Path& path) {
    path.MoveTo(segments.back().End());
    for (size_t i = segments.size(); i-- > 1;) {
        const Segment& s = segments[i];
        if (s.verb == Verb::Line) path.LineTo(s.points[0]);
        if (s.verb == Verb::Cubic) path.CubicTo(s.points[2], s.points[1], s.points[0]);
    }
    if (isClosed) path.Close();
}

/// Adds where the curve turns back along one axis.
void AddExtremes(const Point (&curve)[4], double Point::*axis, Box& box) {
    const double p0 = curve[0].*axis, p1 = curve[1].*axis, p2 = curve[2].*axis, p3 = curve[3].*axis;
    if (std::min(p1, p2) >= std::min(p0, p3) && std::max(p1, p2) <= std::max(p0, p3)) return;
    // A third of the derivative: a t^2 + 2 b t + c.
    const double a = p3 - p0 + 3 * (p1 - p2), b = p0 - 2 * p1 + p2, c = p1 - p0;
    const double discriminant = b * b - a * c;
    if (!(discriminant >= 0)) return;
    // Of the two forms of each root, the one that subtracts nothing from its like.
    const double q = -(b + std::copysign(std::sqrt(discriminant), b));
    for (const double t : {q / a, c / q}) {
        if (t > 0 && t < 1) box.Add(CubicAt(curve, t));
    }
}

Box BoxOfMapped(const Path& path, const Matrix* matrix) {
    Box box;
    Segment segment;
    for (Segments segments(path); segments.Next(segment);) {
        if (segment.verb == Verb::Move) continue;
        if (matrix) {
            for (Point& p : segment.points) p = matrix->Map(p);
        }
        box.Add(segment.Start());
        box.Add(segment.End());
        if (segment.verb != Verb::Cubic) continue;
        AddExtremes(segment.points, &Point::x, box);
        AddExtremes(segment.points, &Point::y, box);
    }
    return box;
}

} // namespace

std::vector<Path> Subpaths(const Path& path) {
    std::vector<Path> subpaths;
    const auto isMoveAlone = [](const Path& p) { return p.Verbs().size() == 1; };
    Segment segment;
    for (Segments segments(path); segments.Next(segment);) {
        if (segment.verb == Verb::Move && (subpaths.empty() || !isMoveAlone(subpaths.back()))) {
            subpaths.emplace_back();
        }
        if (segment.verb == Verb::Move) subpaths.back().Clear();
        AddSegment(segment, subpaths.back());
    }
    if (!subpaths.empty() && isMoveAlone(subpaths.back())) subpaths.pop_back();
    return subpaths;
}

Path Reversed(const Path& path) {
    Path reversed;
    reversed.Reserve(path.Verbs().size(), path.Points().size());
    std::vector<Segment> subpath;
    Segment segment;
    for (Segments segments(path); segments.Next(segment);) {
        if (segment.verb == Verb::Move && !subpath.empty()) AppendReversed(subpath, false, reversed);
        if (segment.verb == Verb::Move) subpath.clear();
        if (segment.verb == Verb::Close) {
            AppendReversed(subpath, true, reversed);
            subpath.clear();
        } else {
            subpath.push_back(segment);
        }
    }
    if (!subpath.empty()) AppendReversed(subpath, false, reversed);
    return reversed;
}

bool IsWithin(double distance, const Path& path, const Matrix& matrix) {
    return std::all_of(path.Points().begin(), path.Points().end(), [&](Point point) {
        point = matrix.Map(point);
        return std::abs(point.x) <= distance && std::abs(point.y) <= distance;
    });
}

Box BoxOf(const Path& path) { return BoxOfMapped(path, nullptr); }

Box BoxOf(const Path& path, const Matrix& matrix) { return BoxOfMapped(path, &matrix); }

void SplitCubic(const Point (&curve)[4], double t, Point (&halves)[7]) {
    const Point middle = Mix(curve[1], curve[2], t);
    halves[0] = curve[0];
    halves[1] = Mix(curve[0], curve[1], t);
    halves[2] = Mix(halves[1], middle, t);
    halves[6] = curve[3];
    halves[5] = Mix(curve[2], curve[3], t);
    halves[4] = Mix(middle, halves[5], t);
    halves[3] = Mix(halves[2], halves[4], t);
}

void CutCubic(const Point (&curve)[4], double from, double to, Point (&part)[4]) {
    Point halves[7];
    SplitCubic(curve, to, halves);
    const Point front[4] = {halves[0], halves[1], halves[2], to < 1 ? halves[3] : curve[3]};
    SplitCubic(front, to > 0 ? from / to : 0, halves);
    std::copy_n(halves + 3, 4, part);
}

Point CubicAt(const Point (&curve)[4], double t) {
    const double u = 1 - t;
    return curve[0] * (u * u * u) + curve[1] * (3 * u * u * t) + curve[2] * (3 * u * t * t) +
           curve[3] * (t * t * t);
}

} // namespace ozm::conform
