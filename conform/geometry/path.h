#pragma once

#include "geometry/box.h"
#include "geometry/matrix.h"
#include "geometry/point.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace ozm::conform {

enum class FillRule : uint8_t { NonZero, EvenOdd };

/// What a path is made of; each takes the number of points in brackets.
enum class Verb : uint8_t {
    Move,  ///< Begins a subpath (1).
    Line,  ///< (1)
    Cubic, ///< Two control points and the end (3).
    Close, ///< (0)
};

/// Straight lines and cubic curves in absolute coordinates. Every subpath begins with a `Move`, also after a
/// `Close`.
class Path {
public:
    void MoveTo(Point p);
    void LineTo(Point p);
    void CubicTo(Point control1, Point control2, Point end);
    /// Adds the same curve with the degree raised to three.
    void QuadraticTo(Point control, Point end);
    /// Closes the subpath; nothing when it is closed already. A segment that follows begins a new subpath at
    /// the start of this one.
    void Close();
    /// Appends the subpaths of another path.
    void Append(const Path& path);
    void Clear();
    void Reserve(size_t verbs, size_t points);

    bool IsEmpty() const { return m_verbs.empty(); }
    /// Where the next segment starts; {0, 0} for an empty path.
    Point Pen() const { return m_isClosed ? m_start : m_points.empty() ? Point{} : m_points.back(); }
    const std::vector<Verb>& Verbs() const { return m_verbs; }
    const std::vector<Point>& Points() const { return m_points; }

    /// Maps every point.
    void Transform(const Matrix& matrix);

    friend bool operator==(const Path& a, const Path& b) {
        return a.m_verbs == b.m_verbs && a.m_points == b.m_points;
    }

private:
    void BeginSegment();

    std::vector<Verb> m_verbs;
    std::vector<Point> m_points;
    Point m_start;
    bool m_isClosed = true; ///< The next segment needs a `Move` first.
};

/// One verb with all its points, the point it starts at included.
struct Segment {
    Verb verb = Verb::Move;
    /// The start (of a `Move`: the point itself) and the points of the verb; a `Close` ends at the start of
    /// its subpath.
    Point points[4];

    Point Start() const { return points[0]; }
    Point End() const { return points[verb == Verb::Cubic ? 3 : verb == Verb::Move ? 0 : 1]; }
};

/// Reads a path segment by segment. The path has to stay unchanged meanwhile.
class Segments {
public:
    explicit Segments(const Path& path) : m_path(path) {}
    /// Reads the next segment; false at the end.
    bool Next(Segment& segment);

private:
    const Path& m_path;
    size_t m_verb = 0, m_point = 0;
    Point m_pen, m_start;
};

Path Transformed(Path path, const Matrix& matrix);

/// The subpaths, each a path of its own. Those of a `Move` alone are left out.
std::vector<Path> Subpaths(const Path& path);

/// The same subpaths with each drawn from its end to its start.
Path Reversed(const Path& path);

/// True when the transform takes no coordinate beyond this distance from 0.
bool IsWithin(double distance, const Path& path, const Matrix& matrix);

/// The smallest box around what is drawn: curves reach as far as they do, not as far as their control points.
/// A `Move` that nothing follows does not count.
Box BoxOf(const Path& path);
/// The box of the path after a transform.
Box BoxOf(const Path& path, const Matrix& matrix);

/// The two halves of a cubic curve at `t`, as seven points of which the fourth is shared.
void SplitCubic(const Point (&curve)[4], double t, Point (&halves)[7]);
/// The part of a cubic curve between two parameters.
void CutCubic(const Point (&curve)[4], double from, double to, Point (&part)[4]);
Point CubicAt(const Point (&curve)[4], double t);

} // namespace ozm::conform
