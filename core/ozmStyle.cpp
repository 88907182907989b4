#include <Ozmira/ozmRenderingState.h>
#include <Ozmira/ozmStyle.h>

#include <new>
#include <utility>

namespace ozm {

StyleProperty::Payload StyleProperty::PayloadOf(Type type) {
    switch (type) {
    case Type::StrokeColor:
    case Type::FillColor: return Payload::Color;
    case Type::StrokeLineCap:
    case Type::StrokeLineJoin:
    case Type::FillRule: return Payload::Keyword;
    case Type::StrokeDashArray: return Payload::DashArray;
    case Type::FillURL:
    case Type::ClipPathURL: return Payload::URL;
    case Type::ClipRule: return Payload::None;
    default: return Payload::Number;
    }
}

StyleProperty::StyleProperty(Type ofType) noexcept : type(ofType) { ConstructEmpty(); }

StyleProperty::StyleProperty(const StyleProperty& other) : type(other.type) {
    switch (PayloadOf(type)) {
    case Payload::Color: new (&color) Color(other.color); break;
    case Payload::Number: number = other.number; break;
    case Payload::Keyword: keyword = other.keyword; break;
    case Payload::None: keyword = 0; break;
    case Payload::DashArray: new (&dashArray) std::vector<double>(other.dashArray); break;
    case Payload::URL: new (&url) std::string(other.url); break;
    }
}

StyleProperty::StyleProperty(StyleProperty&& other) noexcept : type(other.type) { ConstructFrom(other); }

StyleProperty& StyleProperty::operator=(const StyleProperty& other) {
    if (this != &other) *this = StyleProperty(other);
    return *this;
}

StyleProperty& StyleProperty::operator=(StyleProperty&& other) noexcept {
    if (this == &other) return *this;
    DestroyPayload();
    type = other.type;
    ConstructFrom(other);
    return *this;
}

void StyleProperty::ConstructEmpty() noexcept {
    switch (PayloadOf(type)) {
    case Payload::Color: new (&color) Color(); break;
    case Payload::Number: number = 0; break;
    case Payload::Keyword:
    case Payload::None: keyword = 0; break;
    case Payload::DashArray: new (&dashArray) std::vector<double>(); break;
    case Payload::URL: new (&url) std::string(); break;
    }
}

void StyleProperty::ConstructFrom(StyleProperty& other) noexcept {
    ConstructEmpty();
    switch (PayloadOf(type)) {
    case Payload::Color: color = other.color; break;
    case Payload::Number: number = other.number; break;
    case Payload::Keyword: keyword = other.keyword; break;
    case Payload::None: keyword = 0; break;
    case Payload::DashArray: dashArray.swap(other.dashArray); break;
    case Payload::URL: url.swap(other.url); break;
    }
}

const RenderingState kRenderingStateDefault = [] {
    RenderingState state;
    state.strokeOpacity = 1;
    state.strokeWidth = 1;
    state.miterLimit = 4;
    state.fillColor.a = 1;
    state.fillOpacity = 1;
    state.opacity = 1;
    return state;
}();

} // namespace ozm
