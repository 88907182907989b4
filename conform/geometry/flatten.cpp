#include "geometry/flatten.h"

#include <algorithm>
#include <cmath>

namespace ozm::conform {

int CubicSteps(const Point (&curve)[4], double tolerance) {
    // The deviation of a chord is at most an eighth of the second derivative over its parameter interval.
    const double bend =
        std::max(Length(curve[0] - curve[1] * 2 + curve[2]), Length(curve[1] - curve[2] * 2 + curve[3]));
    const double steps = std::ceil(std::sqrt(0.75 * bend / tolerance));
    constexpr double kMost = 500;
    return static_cast<int>(steps >= 1 ? std::min(steps, kMost) : 1);
}

std::vector<Polyline> Flatten(const Path& path, double tolerance) {
    std::vector<Polyline> polylines;
    Polyline current;
    bool hasSegment = false;
    const auto add = [&](Point p) {
        hasSegment = true;
        if (current.points.empty() || p != current.points.back()) current.points.push_back(p);
    };
    const auto finish = [&](bool isClosed) {
        if (isClosed && current.points.size() > 1 && current.points.front() == current.points.back()) {
            current.points.pop_back();
        }
        current.isClosed = isClosed;
        if (isClosed || hasSegment) polylines.push_back(std::move(current));
        current = {};
        hasSegment = false;
    };
    Segment segment;
    for (Segments segments(path); segments.Next(segment);) {
        switch (segment.verb) {
        case Verb::Move:
            if (!current.points.empty()) finish(false);
            current.points.push_back(segment.points[0]);
            break;
        case Verb::Line: add(segment.points[1]); break;
        case Verb::Cubic: {
            const int steps = CubicSteps(segment.points, tolerance);
            for (int i = 1; i < steps; ++i) add(CubicAt(segment.points, static_cast<double>(i) / steps));
            add(segment.points[3]);
            break;
        }
        case Verb::Close: finish(true); break;
        }
    }
    if (!current.points.empty()) finish(false);
    return polylines;
}

Path PathOf(const std::vector<Polyline>& polylines) {
    Path path;
    for (const Polyline& polyline : polylines) {
        for (size_t i = 0; i < polyline.points.size(); ++i) {
            if (i == 0) path.MoveTo(polyline.points[i]);
            if (i > 0) path.LineTo(polyline.points[i]);
        }
        if (polyline.isClosed) path.Close();
    }
    return path;
}

} // namespace ozm::conform
