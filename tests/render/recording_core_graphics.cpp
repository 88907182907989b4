#include "recording_core_graphics.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>
#include <map>
#include <memory>
#include <type_traits>
#include <utility>

namespace recording {

struct Object {
    std::string name;
    virtual ~Object() = default;
};

} // namespace recording

struct CGColorSpace : recording::Object {};
struct CGContext : recording::Object {};
struct CGGradient : recording::Object {};
struct CGImage : recording::Object {};
struct CGPath : recording::Object {};

namespace recording {

State state;

namespace {

std::string calls;
std::map<std::string, std::unique_ptr<Object>> objects;
std::map<std::string, int> counters;

using Numbers = std::vector<CGFloat>;

template <typename T>
requires(std::is_arithmetic_v<T> || std::is_enum_v<T>) std::string text(T value) {
    char buffer[32];
    // Adding zero turns -0 into 0.
    std::snprintf(buffer, sizeof buffer, "%.12g", static_cast<double>(value) + 0.0);
    return buffer;
}
std::string text(const Object* object) { return object ? object->name : "null"; }
std::string text(const void* pointer) { return pointer ? "data" : "null"; }
std::string text(const Numbers& numbers) {
    std::string result;
    for (const CGFloat number : numbers) result.append(result.empty() ? "" : " ").append(text(number));
    return '[' + result + ']';
}
/// Points, rectangles and matrices, all of which consist of CGFloats.
template <typename T>
requires std::is_trivial_v<T> && std::is_class_v<T> std::string text(const T& value) {
    const auto parts = std::bit_cast<std::array<CGFloat, sizeof(T) / sizeof(CGFloat)>>(value);
    return text(Numbers(parts.begin(), parts.end()));
}

template <typename... Arguments>
void record(const char* name, const Arguments&... arguments) {
    calls += name;
    (calls.append(" ").append(text(arguments)), ...);
    calls += '\n';
}

template <typename T>
T* create(const char* kind) {
    auto object = std::make_unique<T>();
    T* result = object.get();
    result->name = kind + std::to_string(++counters[kind]);
    objects[result->name] = std::move(object);
    return result;
}

void destroy(const Object* object) {
    if (object) objects.erase(std::string(object->name));
}

} // namespace

std::string takeCalls() { return std::exchange(calls, {}); }

std::vector<std::string> liveObjects() {
    std::vector<std::string> names;
    for (const auto& entry : objects) names.push_back(entry.first);
    return names;
}

void reset() {
    state = {};
    calls.clear();
    objects.clear();
    counters.clear();
}

CGContextRef newContext() { return create<CGContext>("context"); }

} // namespace recording

using namespace recording;

void CGContextSaveGState(CGContextRef) {
    const char here = 0;
    state.lowestStackAddress = std::min(state.lowestStackAddress, reinterpret_cast<uintptr_t>(&here));
    record("SaveGState");
}

CGRect CGContextGetPathBoundingBox(CGContextRef) {
    record("GetPathBoundingBox");
    return state.pathBoundingBox;
}

// clang-format off
#define ON_CONTEXT(name, parameters, ...) \
    void CGContext##name parameters { record(#name __VA_OPT__(,) __VA_ARGS__); }
ON_CONTEXT(RestoreGState, (CGContextRef))
ON_CONTEXT(ScaleCTM, (CGContextRef, CGFloat x, CGFloat y), x, y)
ON_CONTEXT(TranslateCTM, (CGContextRef, CGFloat x, CGFloat y), x, y)
ON_CONTEXT(ConcatCTM, (CGContextRef, CGAffineTransform t), t)
ON_CONTEXT(SetLineWidth, (CGContextRef, CGFloat width), width)
ON_CONTEXT(SetLineCap, (CGContextRef, CGLineCap cap), cap)
ON_CONTEXT(SetLineJoin, (CGContextRef, CGLineJoin join), join)
ON_CONTEXT(SetMiterLimit, (CGContextRef, CGFloat limit), limit)
ON_CONTEXT(SetLineDash, (CGContextRef, CGFloat phase, const CGFloat* lengths, size_t count),
           phase, static_cast<const void*>(lengths), Numbers(lengths, lengths + count))
ON_CONTEXT(SetAlpha, (CGContextRef, CGFloat alpha), alpha)
ON_CONTEXT(SetFillColorSpace, (CGContextRef, CGColorSpaceRef space), space)
ON_CONTEXT(SetStrokeColorSpace, (CGContextRef, CGColorSpaceRef space), space)
ON_CONTEXT(SetFillColor, (CGContextRef, const CGFloat* c), Numbers(c, c + 4))
ON_CONTEXT(SetStrokeColor, (CGContextRef, const CGFloat* c), Numbers(c, c + 4))
ON_CONTEXT(SetRGBStrokeColor, (CGContextRef, CGFloat r, CGFloat g, CGFloat b, CGFloat a), r, g, b, a)
ON_CONTEXT(MoveToPoint, (CGContextRef, CGFloat x, CGFloat y), x, y)
ON_CONTEXT(AddLineToPoint, (CGContextRef, CGFloat x, CGFloat y), x, y)
ON_CONTEXT(AddCurveToPoint, (CGContextRef, CGFloat a, CGFloat b, CGFloat c, CGFloat d, CGFloat x, CGFloat y),
           a, b, c, d, x, y)
ON_CONTEXT(ClosePath, (CGContextRef))
ON_CONTEXT(AddEllipseInRect, (CGContextRef, CGRect rect), rect)
ON_CONTEXT(AddPath, (CGContextRef, CGPathRef path), path)
ON_CONTEXT(DrawPath, (CGContextRef, CGPathDrawingMode mode), mode)
ON_CONTEXT(StrokeRect, (CGContextRef, CGRect rect), rect)
ON_CONTEXT(Clip, (CGContextRef))
ON_CONTEXT(EOClip, (CGContextRef))
ON_CONTEXT(ClipToRect, (CGContextRef, CGRect rect), rect)
ON_CONTEXT(DrawLinearGradient, (CGContextRef, CGGradientRef gradient, CGPoint start, CGPoint end,
           CGGradientDrawingOptions options), gradient, start, end, options)
ON_CONTEXT(DrawRadialGradient, (CGContextRef, CGGradientRef gradient, CGPoint start, CGFloat startRadius,
           CGPoint end, CGFloat endRadius, CGGradientDrawingOptions options),
           gradient, start, startRadius, end, endRadius, options)

#define ON_PATH(name, parameters, ...) \
    void CGPath##name parameters { record("Path" #name, path __VA_OPT__(,) __VA_ARGS__); }
ON_PATH(MoveToPoint, (CGMutablePathRef path, const CGAffineTransform*, CGFloat x, CGFloat y), x, y)
ON_PATH(AddLineToPoint, (CGMutablePathRef path, const CGAffineTransform*, CGFloat x, CGFloat y), x, y)
ON_PATH(AddCurveToPoint, (CGMutablePathRef path, const CGAffineTransform*, CGFloat a, CGFloat b, CGFloat c,
        CGFloat d, CGFloat x, CGFloat y), a, b, c, d, x, y)
ON_PATH(CloseSubpath, (CGMutablePathRef path))
ON_PATH(AddEllipseInRect, (CGMutablePathRef path, const CGAffineTransform*, CGRect rect), rect)

#define CREATE(name, made, type, kind, parameters, ...) \
    type##Ref CG##name parameters { record(#name __VA_OPT__(,) __VA_ARGS__); \
                                    return made ? create<type>(kind) : nullptr; }
CREATE(ColorSpaceCreateDeviceRGB, true, CGColorSpace, "colorSpace", ())
CREATE(GradientCreateWithColorComponents, state.createsGradients, CGGradient, "gradient",
       (CGColorSpaceRef space, const CGFloat* components, const CGFloat* locations, size_t count),
       space, Numbers(components, components + 4 * count), Numbers(locations, locations + count), count)
CREATE(BitmapContextCreate, state.createsBitmaps, CGContext, "bitmap",
       (void* data, size_t width, size_t height, size_t bits, size_t rowBytes, CGColorSpaceRef space,
        uint32_t info), data, width, height, bits, rowBytes, space, info)
CREATE(BitmapContextCreateImage, true, CGImage, "image", (CGContextRef context), context)
CREATE(PathCreateWithRoundedRect, true, CGPath, "path",
       (CGRect rect, CGFloat rx, CGFloat ry, const CGAffineTransform* m), rect, rx, ry,
       static_cast<const void*>(m))
CGMutablePathRef CGPathCreateMutable() { record("PathCreateMutable"); return create<CGPath>("path"); }

#define RELEASE(name) \
    void CG##name##Release(CG##name##Ref object) { record(#name "Release", object); destroy(object); }
RELEASE(ColorSpace)
RELEASE(Context)
RELEASE(Gradient)
RELEASE(Path)
// clang-format on
