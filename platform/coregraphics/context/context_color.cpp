// The colours of a context.
#include "context/context.h"

using namespace ozcg;

namespace {

void setColor(Ref<CGColorSpace>& space, Rgba& current, CGColorSpace* newSpace, const CGFloat* components) {
    if (space.get() != newSpace) space = Ref<CGColorSpace>::retaining(newSpace);
    current = rgbaFromComponents(*newSpace, components);
}

void setFill(CGContextRef c, CGColorSpace* space, const CGFloat* components) {
    setColor(c->state.fillSpace, c->state.fillColor, space, components);
}

void setStroke(CGContextRef c, CGColorSpace* space, const CGFloat* components) {
    setColor(c->state.strokeSpace, c->state.strokeColor, space, components);
}

// Black is 0 in every space; alpha comes last.
const CGFloat* opaqueBlack(const CGColorSpace& space) {
    static constexpr CGFloat kBlack[] = {0, 0, 0, 1};
    return kBlack + (3 - space.components());
}

} // namespace

void CGContextSetFillColorWithColor(CGContextRef c, CGColorRef color) {
    if (c && !c->isMissing(color)) setFill(c, color->space.get(), color->components.data());
}

void CGContextSetStrokeColorWithColor(CGContextRef c, CGColorRef color) {
    if (c && !c->isMissing(color)) setStroke(c, color->space.get(), color->components.data());
}

void CGContextSetFillColorSpace(CGContextRef c, CGColorSpaceRef space) {
    if (c && !c->isMissing(space)) setFill(c, space, opaqueBlack(*space));
}

void CGContextSetStrokeColorSpace(CGContextRef c, CGColorSpaceRef space) {
    if (c && !c->isMissing(space)) setStroke(c, space, opaqueBlack(*space));
}

void CGContextSetFillColor(CGContextRef c, const CGFloat* components) {
    if (c && components) setFill(c, c->state.fillSpace.get(), components);
}

void CGContextSetStrokeColor(CGContextRef c, const CGFloat* components) {
    if (c && components) setStroke(c, c->state.strokeSpace.get(), components);
}

void CGContextSetGrayFillColor(CGContextRef c, CGFloat gray, CGFloat alpha) {
    const CGFloat components[] = {gray, alpha};
    if (c) setFill(c, deviceGray(), components);
}

void CGContextSetGrayStrokeColor(CGContextRef c, CGFloat gray, CGFloat alpha) {
    const CGFloat components[] = {gray, alpha};
    if (c) setStroke(c, deviceGray(), components);
}

void CGContextSetRGBFillColor(CGContextRef c, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
    const CGFloat components[] = {red, green, blue, alpha};
    if (c) setFill(c, deviceRGB(), components);
}

void CGContextSetRGBStrokeColor(CGContextRef c, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
    const CGFloat components[] = {red, green, blue, alpha};
    if (c) setStroke(c, deviceRGB(), components);
}
