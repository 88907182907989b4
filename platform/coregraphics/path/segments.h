// Walks over the elements and the segments of a path.
#pragma once

#include "path/flatten.h"
#include "path/path_data.h"

namespace ozcg {

/// Calls visit(verb, points) for each element; `points` holds pointCount(verb) points.
template <class Visit>
void forEachElement(const PathData& path, Visit&& visit) {
    const CGPoint* points = path.points().data();
    for (const Verb verb : path.verbs()) {
        visit(verb, points);
        points += pointCount(verb);
    }
}

/// Walks the segments of each subpath, with points mapped by toPoint(CGPoint) -> Vec2<double> and quadratic
/// curves raised to cubic ones. The visitor has:
///
///     begin(start)              a subpath starts
///     line(from, to)
///     curve(cubic)
///     end(from, start, closed)  the subpath is over; a closed one has a last line from `from` to `start`
template <class ToPoint, class Visitor>
void walkSegments(const PathData& path, ToPoint&& toPoint, Visitor&& visitor) {
    Vec2<double> start{}, current{};
    bool isOpen = false;
    forEachElement(path, [&](Verb verb, const CGPoint* p) {
        switch (verb) {
        case Verb::move:
            if (isOpen) visitor.end(current, start, false);
            start = current = toPoint(p[0]);
            visitor.begin(start);
            isOpen = true;
            break;
        case Verb::line: {
            const Vec2<double> to = toPoint(p[0]);
            visitor.line(current, to);
            current = to;
            break;
        }
        case Verb::quad: {
            const Cubic<double> c = cubicFromQuad(current, toPoint(p[0]), toPoint(p[1]));
            visitor.curve(c);
            current = c.p3;
            break;
        }
        case Verb::cubic: {
            const Cubic<double> c = {current, toPoint(p[0]), toPoint(p[1]), toPoint(p[2])};
            visitor.curve(c);
            current = c.p3;
            break;
        }
        case Verb::close:
            visitor.end(current, start, true);
            isOpen = false;
            break;
        }
    });
    if (isOpen) visitor.end(current, start, false);
}

} // namespace ozcg
