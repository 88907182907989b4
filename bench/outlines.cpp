#include "outlines.h"

#include <algorithm>

namespace bench {

namespace {

ozm::TVec2<double> Apply(const ozm::Transform& t, ozm::TVec2<double> p) {
    return {t.a * p.x + t.c * p.y + t.tx, t.b * p.x + t.d * p.y + t.ty};
}

ozm::Path Transformed(ozm::Path path, const ozm::Transform& t) {
    using Type = ozm::PathCommand::Type;
    for (ozm::PathCommand& command : path.commands) {
        if (command.type == Type::MoveTo) command.point = Apply(t, command.point);
        if (command.type == Type::LineTo) {
            for (auto& point : command.points) point = Apply(t, point);
        }
        if (command.type == Type::CurveTo) {
            for (auto& c : command.curves) c = {Apply(t, c.end), Apply(t, c.control1), Apply(t, c.control2)};
        }
    }
    return path;
}

void Collect(const ozm::Document& document, const ozm::Element& element, const ozm::Transform& parent,
             Outlines& outlines) {
    if (element.hidden) return;
    const ozm::Transform transform = ozm::TransformConcat(element.transform, parent);
    if (element.type == ozm::Element::Type::Path) outlines.push_back(Transformed(element.path, transform));
    if (element.type != ozm::Element::Type::Group) return;
    for (const uint64_t child : element.children)
        Collect(document, document.elements[child], transform, outlines);
}

} // namespace

Outlines CollectOutlines(const ozm::Document& document, unsigned size) {
    Outlines outlines;
    const ozm::Rectf& box = document.viewBox;
    const double side = std::max(box.size.x, box.size.y);
    if (document.elements.empty() || !(side > 0)) return outlines;
    const double scale = size / side;
    const ozm::Transform fit{scale,
                             0,
                             0,
                             scale,
                             (size - scale * box.size.x) / 2 - scale * box.origin.x,
                             (size - scale * box.size.y) / 2 - scale * box.origin.y};
    Collect(document, document.elements.front(), fit, outlines);
    return outlines;
}

} // namespace bench
