#include "geometry/stroke.h"

#include "geometry/cubic_offset.h"
#include "geometry/shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

namespace ozm::conform {

namespace {

/// A line or curve of the path with its directions.
struct Piece {
    bool isLine;
    Point points[4]; ///< Of a line the first and the last count.
    Point startDirection, endDirection;
    /// The curve turns back where it is joined to another part of it; such joins are always round.
    bool startsAtCusp, endsAtCusp;
    /// The pieces before and after cover what the left side of this curve does.
    bool isCovered = false;

    Piece Reversed() const {
        return {isLine,        {points[3], points[2], points[1], points[0]},
                -endDirection, -startDirection,
                endsAtCusp,    startsAtCusp};
    }
    double LineLength() const { return Distance(points[0], points[3]); }
};

/// Draws one subpath after another.
class Stroker {
public:
    Stroker(const Stroke& stroke, double tolerance)
        : m_stroke(stroke), m_half(stroke.width / 2), m_tolerance(tolerance) {}

    Path Outline(const Path& path) {
        Segment segment;
        for (Segments segments(path); segments.Next(segment);) {
            if (segment.verb == Verb::Move) {
                EndSubpath(false);
                m_start = segment.points[0];
            } else {
                m_hasSegment = true;
                Add(segment);
                if (segment.verb == Verb::Close) EndSubpath(true);
            }
        }
        EndSubpath(false);
        return std::move(m_out);
    }

private:
    void Add(const Segment& segment) {
        const Point* const p = segment.points;
        if (segment.verb != Verb::Cubic)
            return AddPiece({true, {p[0], p[0], p[1], p[1]}, {}, {}, false, false});
        double cusps[2];
        const int count = FindCusps(segment.points, cusps);
        for (int i = 0; i <= count; ++i) {
            Piece piece{false, {p[0], p[1], p[2], p[3]}, {}, {}, i > 0, i < count};
            if (count > 0)
                CutCubic(segment.points, i > 0 ? cusps[i - 1] : 0, i < count ? cusps[i] : 1, piece.points);
            AddPiece(piece);
        }
    }

    void AddPiece(Piece piece) {
        // What is shorter is a matter of rounding and has no direction of its own.
        const double tooShort = 1e-6 * m_stroke.width;
        const bool hasLength = std::any_of(piece.points + 1, std::end(piece.points),
                                           [&](Point p) { return Distance(p, piece.points[0]) > tooShort; });
        if (!hasLength || !IsFinite(piece.points[3])) return;
        piece.startDirection = StartDirection(piece.points);
        piece.endDirection = EndDirection(piece.points);
        m_pieces.push_back(piece);
    }

    void EndSubpath(bool isClosed) {
        if (m_pieces.empty()) {
            if (m_hasSegment) AddDot();
        } else if (isClosed) {
            AddClosedSide();
            Reverse();
            AddClosedSide();
        } else {
            m_out.MoveTo(m_pieces.front().points[0] + StartNormal(m_pieces.front()));
            AddOpenSide();
            Reverse();
            AddOpenSide();
            m_out.Close();
        }
        m_pieces.clear();
        m_hasSegment = false;
    }

    void Reverse() {
        std::reverse(m_pieces.begin(), m_pieces.end());
        for (Piece& piece : m_pieces) piece = piece.Reversed();
    }

    void AddDot() {
        if (m_stroke.cap == LineCap::Round)
            m_out.Append(PathOf(Ellipse{m_start.x, m_start.y, m_half, m_half}));
        if (m_stroke.cap != LineCap::Square) return;
        m_out.Append(
            PathOf(Rectangle{m_start.x - m_half, m_start.y - m_half, m_stroke.width, m_stroke.width}));
    }

    Point StartNormal(const Piece& piece) const { return LeftOf(piece.startDirection) * m_half; }
    Point EndNormal(const Piece& piece) const { return LeftOf(piece.endDirection) * m_half; }

    /// Finds rounded corners that are too tight for the pen: between two lines long enough, what lies inside
    /// of them is painted anyway.
    void FindCovered(bool isClosed) {
        const size_t count = m_pieces.size();
        const auto hasRoom = [&](const Piece& piece) { return piece.isLine && piece.LineLength() >= m_half; };
        for (size_t i = 0; i < count; ++i) {
            Piece& piece = m_pieces[i];
            const bool isAtEnd = !isClosed && (i == 0 || i + 1 == count);
            constexpr double kSharpest = -0.17; // The cosine of 100 degrees.
            piece.isCovered = !piece.isLine && !isAtEnd &&
                              Dot(piece.startDirection, piece.endDirection) > kSharpest &&
                              hasRoom(m_pieces[(i + count - 1) % count]) &&
                              hasRoom(m_pieces[(i + 1) % count]) && IsTight(piece.points, m_half);
        }
    }

    /// Draws the outline on the left of a closed subpath.
    void AddClosedSide() {
        FindCovered(true);
        // A ring of such curves leaves no hole.
        const bool hasHole = std::any_of(m_pieces.begin(), m_pieces.end(), [&](const Piece& piece) {
            return piece.isLine || !IsTight(piece.points, m_half);
        });
        if (!hasHole) return;
        const Piece &first = m_pieces.front(), &last = m_pieces.back();
        const std::optional<Point> corner = Corner(last, first);
        m_out.MoveTo(corner && first.isLine ? *corner : first.points[0] + StartNormal(first));
        for (size_t i = 0; i + 1 < m_pieces.size(); ++i) AddPieceAndJoin(m_pieces[i], m_pieces[i + 1]);
        AddPieceAndJoin(last, first);
        m_out.Close();
    }

    /// Draws on, along the left side of an open subpath and round its end.
    void AddOpenSide() {
        FindCovered(false);
        for (size_t i = 0; i + 1 < m_pieces.size(); ++i) AddPieceAndJoin(m_pieces[i], m_pieces[i + 1]);
        AddOffset(m_pieces.back(), false);
        AddCap(m_pieces.back());
    }

    void AddPieceAndJoin(const Piece& piece, const Piece& next) {
        const std::optional<Point> corner = Corner(piece, next);
        AddOffset(piece, corner.has_value());
        AddJoin(piece, next, corner);
    }

    /// Draws along a piece. Before a corner a line need not stop.
    void AddOffset(const Piece& piece, bool isBeforeCorner) {
        const Point end = piece.points[3] + EndNormal(piece);
        if (piece.isCovered) {
            LineTo(CubicAt(piece.points, 0.5));
            LineTo(end);
        } else if (!piece.isLine) {
            AppendOffset(piece.points, m_half, m_tolerance, m_out);
        } else if (!isBeforeCorner) {
            LineTo(end);
        }
    }

    /// Where the offsets of two pieces meet, if the join ends in one point: the tip of a miter, or on the
    /// inner side the place where two lines cross.
    std::optional<Point> Corner(const Piece& piece, const Piece& next) const {
        const Point from = LeftOf(piece.endDirection), to = LeftOf(next.startDirection);
        const double sine = Cross(from, to), cosine = Dot(from, to);
        if (IsSmooth(sine, cosine)) return {};
        if (sine > 0 && m_stroke.join == LineJoin::Miter) {
            if (2 > m_stroke.miterLimit * m_stroke.miterLimit * (1 + cosine)) return {};
        } else if (sine < 0 && piece.isLine && next.isLine) {
            // At most half of a line, because the other end may need as much.
            const double overlap = m_half * -sine / (1 + cosine);
            if (!(overlap <= std::min(piece.LineLength(), next.LineLength()) / 2)) return {};
        } else {
            return {};
        }
        return piece.points[3] + (from + to) * (m_half / (1 + cosine));
    }

    static bool IsSmooth(double sine, double cosine) { return cosine > 0 && std::abs(sine) < 1e-5; }

    void AddJoin(const Piece& piece, const Piece& next, std::optional<Point> corner) {
        const Point pivot = piece.points[3], from = EndNormal(piece), to = StartNormal(next);
        const double sine = Cross(from, to) / (m_half * m_half), cosine = Dot(from, to) / (m_half * m_half);
        if (corner) {
            LineTo(*corner);
            if (!next.isLine) LineTo(pivot + to);
            return;
        }
        if (piece.endsAtCusp && next.startsAtCusp) return AddArc(pivot, from, to);
        // A line that turns straight back has no inner side.
        const bool isOuter = sine > 0 || (cosine < 0 && sine > -1e-6);
        const bool isSmooth = IsSmooth(sine, cosine);
        if (isOuter && m_stroke.join == LineJoin::Round && !isSmooth) return AddArc(pivot, from, to);
        // Through the pivot, every part of the outline runs round the line the same way.
        if (!isOuter && !isSmooth) LineTo(pivot);
        LineTo(pivot + to);
    }

    void AddCap(const Piece& piece) {
        const Point end = piece.points[3], side = EndNormal(piece);
        const Point forward = piece.endDirection * m_half;
        if (m_stroke.cap == LineCap::Round) return AddArc(end, side, -side);
        if (m_stroke.cap == LineCap::Square) {
            LineTo(end + side + forward);
            LineTo(end - side + forward);
        }
        LineTo(end - side);
    }

    /// Draws an arc clockwise around a centre.
    void AddArc(Point centre, Point from, Point to) {
        double angle = std::atan2(Cross(from, to), Dot(from, to));
        if (angle < 0) angle += 2 * std::numbers::pi;
        const int count = std::max(1, static_cast<int>(std::ceil(angle / (std::numbers::pi / 2) - 1e-3)));
        const double step = angle / count, handle = 4.0 / 3 * std::tan(step / 4);
        const double sine = std::sin(step), cosine = std::cos(step);
        Point a = from;
        for (int i = 1; i <= count; ++i) {
            const Point b = i == count ? to : a * cosine + Perpendicular(a) * sine;
            m_out.CubicTo(centre + a + Perpendicular(a) * handle, centre + b - Perpendicular(b) * handle,
                          centre + b);
            a = b;
        }
    }

    void LineTo(Point p) {
        if (Distance(m_out.Pen(), p) > 1e-9 * m_stroke.width) m_out.LineTo(p);
    }

    const Stroke& m_stroke;
    const double m_half;
    const double m_tolerance;
    std::vector<Piece> m_pieces; ///< Of the subpath.
    Point m_start;
    bool m_hasSegment = false;
    Path m_out;
};

} // namespace

Path OutlineOf(const Path& path, const Stroke& stroke, double tolerance) {
    if (!(stroke.width > 0) || !std::isfinite(stroke.width)) return {};
    return Stroker(stroke, tolerance).Outline(path);
}

Box StrokeBoxOf(const Path& path, const Stroke& stroke, const Matrix& matrix) {
    return BoxOf(OutlineOf(path, stroke, stroke.width * 1e-3), matrix);
}

double StrokeReach(const Stroke& stroke) {
    const double corner = stroke.join == LineJoin::Miter ? std::max(1.0, stroke.miterLimit) : 1;
    const double end = stroke.cap == LineCap::Square ? std::numbers::sqrt2 : 1;
    return stroke.width / 2 * std::max(corner, end);
}

} // namespace ozm::conform
