#include "scene/scene.h"

#include <algorithm>
#include <iterator>

namespace ozm::conform {

double Scene::Tolerance() const {
    const double extent = std::max(viewBox.Width(), viewBox.Height());
    return extent > 0 ? extent / 4000 : 0.01;
}

bool IsUprightRectangle(const Path& path) {
    using enum Verb;
    constexpr Verb kVerbs[] = {Move, Line, Line, Line, Close};
    if (!std::equal(path.Verbs().begin(), path.Verbs().end(), std::begin(kVerbs), std::end(kVerbs)))
        return false;
    const std::vector<Point>& p = path.Points();
    const bool isAcross = p[0].y == p[1].y && p[1].x == p[2].x && p[2].y == p[3].y && p[3].x == p[0].x;
    const bool isDown = p[0].x == p[1].x && p[1].y == p[2].y && p[2].x == p[3].x && p[3].y == p[0].y;
    return isAcross || isDown;
}

} // namespace ozm::conform
