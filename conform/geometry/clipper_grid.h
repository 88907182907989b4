#pragma once

#include "geometry/path.h"

#include <polyclipping/clipper.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace ozm::conform {

/// Turns paths into polygons on the integer grid that Clipper computes on, and its results back into paths.
/// What remains of a curve's chords becomes a part of that curve again.
class ClipperGrid {
public:
    /// `extent` is the box of everything that will be added.
    ClipperGrid(const Box& extent, double tolerance);

    /// False when the extent is empty, too large or not finite.
    bool IsUsable() const { return m_scale > 0; }

    ClipperLib::Paths Add(const Path& path);
    Path PathOf(const ClipperLib::Paths& polygons) const;

    /// A length in grid units.
    double Units(double length) const { return length * m_scale; }

private:
    /// A curve and the points that it was flattened to.
    struct Curve {
        Point points[4];
        int steps;
        size_t firstGridPoint; ///< Of `steps` + 1.
    };
    /// A chord of a curve: from the grid point of index `step` to the next.
    struct Chord {
        size_t curve;
        int step;
    };
    struct Edge {
        ClipperLib::IntPoint from, to;

        bool operator==(const Edge& e) const { return from == e.from && to == e.to; }
    };
    struct EdgeHash {
        size_t operator()(const Edge& edge) const;
    };
    /// What an edge of a polygon is of a curve: the part between two parameters, which fall where the edge
    /// runs against the curve.
    struct CurvePart {
        size_t curve;
        double from, to;
    };
    using CurveParts = std::vector<std::optional<CurvePart>>; ///< For each edge of a polygon.

    ClipperLib::IntPoint Grid(Point p) const;
    Point FromGrid(const ClipperLib::IntPoint& p) const;
    void AddCurve(const Point (&curve)[4], ClipperLib::Path& polygon);
    std::optional<CurvePart> WholeChord(const ClipperLib::IntPoint& from,
                                        const ClipperLib::IntPoint& to) const;
    /// Where `p` lies on the chord that follows `part`, if it does; `isBefore`: that precedes it.
    std::optional<double> OnNeighbour(const CurvePart& part, bool isBefore,
                                      const ClipperLib::IntPoint& p) const;
    CurveParts PartsOf(const ClipperLib::Path& polygon) const;
    void AppendPolygon(const ClipperLib::Path& polygon, Path& path) const;
    void AppendPart(const CurvePart& part, Point end, Path& path) const;

    double m_scale = 0;
    const double m_tolerance;
    std::vector<Curve> m_curves;
    std::vector<ClipperLib::IntPoint> m_gridPoints;
    std::unordered_map<Edge, Chord, EdgeHash> m_chords;
};

} // namespace ozm::conform
