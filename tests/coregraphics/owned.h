// Helpers that the tests share: scoped ownership of objects, and paths as text.
#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>

struct ReleasesObject {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

/// Owns one reference, as returned by a Create or Copy function, or none.
template <class Ref>
class Owned {
public:
    explicit Owned(Ref object = nullptr) : m_object(object) {}

    operator Ref() const { return m_object.get(); }
    Ref get() const { return m_object.get(); }

private:
    std::unique_ptr<std::remove_pointer_t<Ref>, ReleasesObject> m_object;
};

/// Reads a path from text: "M x y", "L x y", "Q" with two points, "C" with three and "Z".
Owned<CGMutablePathRef> pathFromText(const std::string& text);
/// Writes the elements of a path in that form. Coordinates are rounded to six digits, and those below 1e-12
/// to 0.
std::string textOf(CGPathRef path);

// These compare and print values in assertions.
inline bool operator==(const CGPoint& a, const CGPoint& b) { return CGPointEqualToPoint(a, b); }
inline bool operator==(const CGRect& a, const CGRect& b) { return CGRectEqualToRect(a, b); }
inline bool operator==(const CGAffineTransform& a, const CGAffineTransform& b) {
    return CGAffineTransformEqualToTransform(a, b);
}
inline std::ostream& operator<<(std::ostream& out, const CGPoint& p) {
    return out << '(' << p.x << ", " << p.y << ')';
}
inline std::ostream& operator<<(std::ostream& out, const CGRect& r) {
    return out << r.origin << " + " << r.size.width << " x " << r.size.height;
}
inline std::ostream& operator<<(std::ostream& out, const CGAffineTransform& t) {
    return out << '[' << t.a << ' ' << t.b << ' ' << t.c << ' ' << t.d << ' ' << t.tx << ' ' << t.ty << ']';
}
