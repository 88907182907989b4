#include <Ozmira/ozmElement.h>

#include <new>
#include <utility>

namespace ozm {

Element::Element(Type ofType) : type(ofType) { ConstructEmpty(); }

Element::Element(const Element& other)
    : type(other.type), id(other.id), transform(other.transform), styleIndex(other.styleIndex),
      hidden(other.hidden) {
    switch (type) {
    case Type::Group:
    case Type::ClipPath:
    case Type::Defs: new (&children) std::vector<uint64_t>(other.children); break;
    case Type::Path: new (&path) Path(other.path); break;
    case Type::Use: new (&href) std::string(other.href); break;
    case Type::GradientElement: new (&gradient) Gradient(other.gradient); break;
    default: break;
    }
    CopyNumbers(other);
}

Element::Element(Element&& other) noexcept
    : type(other.type), id(std::move(other.id)), transform(other.transform), styleIndex(other.styleIndex),
      hidden(other.hidden) {
    switch (type) {
    case Type::Group:
    case Type::ClipPath:
    case Type::Defs: new (&children) std::vector<uint64_t>(std::move(other.children)); break;
    case Type::Path: new (&path) Path(std::move(other.path)); break;
    case Type::Use: new (&href) std::string(std::move(other.href)); break;
    case Type::GradientElement: new (&gradient) Gradient(std::move(other.gradient)); break;
    default: break;
    }
    CopyNumbers(other);
}

Element::~Element() {
    switch (type) {
    case Type::Group:
    case Type::ClipPath:
    case Type::Defs: children.~vector(); break;
    case Type::Path: path.~Path(); break;
    case Type::Use: href.~basic_string(); break;
    case Type::GradientElement: gradient.~Gradient(); break;
    default: break;
    }
}

void Element::ConstructEmpty() noexcept {
    switch (type) {
    case Type::Group:
    case Type::ClipPath:
    case Type::Defs: new (&children) std::vector<uint64_t>(); break;
    case Type::Path: new (&path) Path(); break;
    case Type::Ellipse: center = radius = {0, 0}; break;
    case Type::Rect: x = y = width = height = rx = ry = 0; break;
    case Type::Use:
        new (&href) std::string();
        position = {0, 0};
        break;
    case Type::GradientElement: new (&gradient) Gradient(); break;
    }
}

void Element::CopyNumbers(const Element& other) noexcept {
    switch (type) {
    case Type::Ellipse:
        center = other.center;
        radius = other.radius;
        break;
    case Type::Rect:
        x = other.x;
        y = other.y;
        width = other.width;
        height = other.height;
        rx = other.rx;
        ry = other.ry;
        break;
    case Type::Use: position = other.position; break;
    default: break;
    }
}

} // namespace ozm
