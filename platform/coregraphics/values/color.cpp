#include "values/color.h"

#include "base/out_of_memory.h"
#include "base/unorm8.h"

#include <algorithm>

namespace ozcg {

Rgba rgbaFromComponents(const CGColorSpace& space, const CGFloat* components) noexcept {
    if (space.components() == 1) return {components[0], components[0], components[0], components[1]};
    return {components[0], components[1], components[2], components[3]};
}

uint32_t premultipliedPixel(const Rgba& color, double alpha) noexcept {
    const double a = clampedToUnit(color.a) * clampedToUnit(alpha);
    const auto component = [a](double value) { return unorm8(clampedToUnit(value) * a); };
    return pixelOf(component(color.r), component(color.g), component(color.b), unorm8(a));
}

} // namespace ozcg

CGColor::CGColor(CGColorSpace* colorSpace, const CGFloat* values) noexcept
    : Object(ozcg::TypeId::color), space(ozcg::Ref<CGColorSpace>::retaining(colorSpace)) {
    std::copy_n(values, count(), components.begin());
}

CGColor::CGColor(const CGColor& other, CGFloat alpha) noexcept
    : Object(ozcg::TypeId::color), space(other.space), components(other.components) {
    components[count() - 1] = alpha;
}

bool CGColor::isEqualTo(const Object& other) const noexcept {
    const auto& color = static_cast<const CGColor&>(other);
    return space == color.space && components == color.components;
}

namespace {

CGColorRef createColor(CFStringRef spaceName, const CGFloat* components) {
    const auto space = ozcg::Ref<CGColorSpace>::adopting(CGColorSpaceCreateWithName(spaceName));
    return CGColorCreate(space.get(), components);
}

} // namespace

CFTypeID CGColorGetTypeID(void) { return static_cast<CFTypeID>(ozcg::TypeId::color); }

CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat* components) {
    if (!space) return ozcg::createdFrom<CGColor>(space);
    if (!components) return ozcg::noObject<CGColor>();
    return ozcg::noteFailure(ozcg::create<CGColor>(space, components));
}

CGColorRef CGColorCreateGenericGray(CGFloat gray, CGFloat alpha) {
    const CGFloat components[] = {gray, alpha};
    return createColor(kCGColorSpaceGenericGray, components);
}

CGColorRef CGColorCreateGenericRGB(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
    const CGFloat components[] = {red, green, blue, alpha};
    return createColor(kCGColorSpaceGenericRGB, components);
}

CGColorRef CGColorCreateSRGB(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
    const CGFloat components[] = {red, green, blue, alpha};
    return createColor(kCGColorSpaceSRGB, components);
}

CGColorRef CGColorCreateCopy(CGColorRef color) { return ozcg::retained(color); }

CGColorRef CGColorCreateCopyWithAlpha(CGColorRef color, CGFloat alpha) {
    return color ? ozcg::noteFailure(ozcg::create<CGColor>(*color, alpha)) : nullptr;
}

CGColorRef CGColorRetain(CGColorRef color) { return ozcg::retained(color); }

void CGColorRelease(CGColorRef color) { ozcg::released(color); }

bool CGColorEqualToColor(CGColorRef color1, CGColorRef color2) { return CFEqual(color1, color2); }

size_t CGColorGetNumberOfComponents(CGColorRef color) { return color ? color->count() : 0; }

const CGFloat* CGColorGetComponents(CGColorRef color) { return color ? color->components.data() : nullptr; }

CGFloat CGColorGetAlpha(CGColorRef color) { return color ? color->components[color->count() - 1] : 0; }

CGColorSpaceRef CGColorGetColorSpace(CGColorRef color) { return color ? color->space.get() : nullptr; }
