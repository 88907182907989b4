#include <CoreGraphics/CGGeometry.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr CGFloat kInfinity = std::numeric_limits<CGFloat>::infinity();

CGFloat low(CGFloat origin, CGFloat size) { return size < 0 ? origin + size : origin; }
CGFloat high(CGFloat origin, CGFloat size) { return size < 0 ? origin : origin + size; }

CGRect rectBetween(CGFloat x0, CGFloat y0, CGFloat x1, CGFloat y1) { return {{x0, y0}, {x1 - x0, y1 - y0}}; }

} // namespace

const CGPoint CGPointZero = {0, 0};
const CGSize CGSizeZero = {0, 0};
const CGRect CGRectZero = {{0, 0}, {0, 0}};
const CGRect CGRectNull = {{kInfinity, kInfinity}, {0, 0}};
const CGRect CGRectInfinite = {{-CGFLOAT_MAX / 2, -CGFLOAT_MAX / 2}, {CGFLOAT_MAX, CGFLOAT_MAX}};

CGFloat CGRectGetMinX(CGRect rect) { return low(rect.origin.x, rect.size.width); }
CGFloat CGRectGetMidX(CGRect rect) { return rect.origin.x + 0.5 * rect.size.width; }
CGFloat CGRectGetMaxX(CGRect rect) { return high(rect.origin.x, rect.size.width); }
CGFloat CGRectGetMinY(CGRect rect) { return low(rect.origin.y, rect.size.height); }
CGFloat CGRectGetMidY(CGRect rect) { return rect.origin.y + 0.5 * rect.size.height; }
CGFloat CGRectGetMaxY(CGRect rect) { return high(rect.origin.y, rect.size.height); }
CGFloat CGRectGetWidth(CGRect rect) { return std::abs(rect.size.width); }
CGFloat CGRectGetHeight(CGRect rect) { return std::abs(rect.size.height); }

bool CGPointEqualToPoint(CGPoint point1, CGPoint point2) {
    return point1.x == point2.x && point1.y == point2.y;
}

bool CGSizeEqualToSize(CGSize size1, CGSize size2) {
    return size1.width == size2.width && size1.height == size2.height;
}

bool CGRectEqualToRect(CGRect rect1, CGRect rect2) {
    if (CGRectIsNull(rect1) || CGRectIsNull(rect2)) return CGRectIsNull(rect1) && CGRectIsNull(rect2);
    const CGRect r1 = CGRectStandardize(rect1), r2 = CGRectStandardize(rect2);
    return CGPointEqualToPoint(r1.origin, r2.origin) && CGSizeEqualToSize(r1.size, r2.size);
}

CGRect CGRectStandardize(CGRect rect) {
    if (CGRectIsNull(rect)) return CGRectNull;
    return {{CGRectGetMinX(rect), CGRectGetMinY(rect)}, {CGRectGetWidth(rect), CGRectGetHeight(rect)}};
}

bool CGRectIsEmpty(CGRect rect) {
    return CGRectIsNull(rect) || rect.size.width == 0 || rect.size.height == 0;
}

bool CGRectIsNull(CGRect rect) { return rect.origin.x == kInfinity || rect.origin.y == kInfinity; }

bool CGRectIsInfinite(CGRect rect) { return CGRectEqualToRect(rect, CGRectInfinite); }

CGRect CGRectInset(CGRect rect, CGFloat dx, CGFloat dy) {
    if (CGRectIsNull(rect)) return CGRectNull;
    const CGRect r = CGRectStandardize(rect);
    const CGSize size = {r.size.width - 2 * dx, r.size.height - 2 * dy};
    if (size.width < 0 || size.height < 0) return CGRectNull;
    return {{r.origin.x + dx, r.origin.y + dy}, size};
}

CGRect CGRectIntegral(CGRect rect) {
    if (CGRectIsNull(rect)) return CGRectNull;
    return rectBetween(std::floor(CGRectGetMinX(rect)), std::floor(CGRectGetMinY(rect)),
                       std::ceil(CGRectGetMaxX(rect)), std::ceil(CGRectGetMaxY(rect)));
}

CGRect CGRectUnion(CGRect r1, CGRect r2) {
    if (CGRectIsNull(r1)) return CGRectStandardize(r2);
    if (CGRectIsNull(r2)) return CGRectStandardize(r1);
    return rectBetween(
        std::min(CGRectGetMinX(r1), CGRectGetMinX(r2)), std::min(CGRectGetMinY(r1), CGRectGetMinY(r2)),
        std::max(CGRectGetMaxX(r1), CGRectGetMaxX(r2)), std::max(CGRectGetMaxY(r1), CGRectGetMaxY(r2)));
}

CGRect CGRectIntersection(CGRect r1, CGRect r2) {
    if (!CGRectIntersectsRect(r1, r2)) return CGRectNull;
    return rectBetween(
        std::max(CGRectGetMinX(r1), CGRectGetMinX(r2)), std::max(CGRectGetMinY(r1), CGRectGetMinY(r2)),
        std::min(CGRectGetMaxX(r1), CGRectGetMaxX(r2)), std::min(CGRectGetMaxY(r1), CGRectGetMaxY(r2)));
}

CGRect CGRectOffset(CGRect rect, CGFloat dx, CGFloat dy) {
    if (CGRectIsNull(rect)) return CGRectNull;
    CGRect r = CGRectStandardize(rect);
    r.origin.x += dx;
    r.origin.y += dy;
    return r;
}

void CGRectDivide(CGRect rect, CGRect* slice, CGRect* remainder, CGFloat amount, CGRectEdge edge) {
    CGRect cut = CGRectStandardize(rect), rest = cut;
    if (!CGRectIsNull(cut)) {
        const bool vertical = edge == CGRectMinYEdge || edge == CGRectMaxYEdge;
        const bool fromEnd = edge == CGRectMaxXEdge || edge == CGRectMaxYEdge;
        const CGFloat whole = vertical ? cut.size.height : cut.size.width;
        const CGFloat part = amount > 0 ? std::min(amount, whole) : 0;
        (vertical ? cut.size.height : cut.size.width) = part;
        (vertical ? rest.size.height : rest.size.width) = whole - part;
        CGRect& moved = fromEnd ? cut : rest;
        (vertical ? moved.origin.y : moved.origin.x) += fromEnd ? whole - part : part;
    }
    if (slice) *slice = cut;
    if (remainder) *remainder = rest;
}

bool CGRectContainsPoint(CGRect rect, CGPoint point) {
    return !CGRectIsNull(rect) && point.x >= CGRectGetMinX(rect) && point.x < CGRectGetMaxX(rect) &&
           point.y >= CGRectGetMinY(rect) && point.y < CGRectGetMaxY(rect);
}

bool CGRectContainsRect(CGRect rect1, CGRect rect2) {
    if (CGRectIsNull(rect2)) return true;
    return !CGRectIsNull(rect1) && CGRectGetMinX(rect2) >= CGRectGetMinX(rect1) &&
           CGRectGetMaxX(rect2) <= CGRectGetMaxX(rect1) && CGRectGetMinY(rect2) >= CGRectGetMinY(rect1) &&
           CGRectGetMaxY(rect2) <= CGRectGetMaxY(rect1);
}

bool CGRectIntersectsRect(CGRect rect1, CGRect rect2) {
    return !CGRectIsNull(rect1) && !CGRectIsNull(rect2) && CGRectGetMinX(rect1) < CGRectGetMaxX(rect2) &&
           CGRectGetMinX(rect2) < CGRectGetMaxX(rect1) && CGRectGetMinY(rect1) < CGRectGetMaxY(rect2) &&
           CGRectGetMinY(rect2) < CGRectGetMaxY(rect1);
}
