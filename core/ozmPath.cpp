#include <Ozmira/ozmPath.h>

namespace ozm {

PathCommand::PathCommand(const PathCommand& other) : type(other.type) {
    switch (type) {
    case Type::LineTo: new (&points) std::vector<TVec2<double>>(other.points); break;
    case Type::CurveTo: new (&curves) std::vector<BezierCurve>(other.curves); break;
    default: new (&point) TVec2<double>(other.point); break;
    }
}

PathCommand& PathCommand::operator=(const PathCommand& other) noexcept {
    if (this != &other) *this = PathCommand(other);
    return *this;
}

PathCommand& PathCommand::operator=(PathCommand&& other) noexcept {
    if (this == &other) return *this;
    DestroyPayload();
    type = other.type;
    ConstructFrom(other);
    return *this;
}

bool operator==(const PathCommand& a, const PathCommand& b) {
    if (a.type != b.type) return false;
    switch (a.type) {
    case PathCommand::Type::MoveTo: return a.point == b.point;
    case PathCommand::Type::LineTo: return a.points == b.points;
    case PathCommand::Type::CurveTo: return a.curves == b.curves;
    default: return true;
    }
}

} // namespace ozm
