// What the tests share: scoped ownership of objects, and paths as text.
#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>

struct ReleasesObject {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

/// Owns one reference to an object that a Create function returned, or none.
template <class Ref>
class Owned {
public:
    explicit Owned(Ref object = nullptr) : m_object(object) {}

    operator Ref() const { return m_object.get(); }
    Ref get() const { return m_object.get(); }

private:
    std::unique_ptr<std::remove_pointer_t<Ref>, ReleasesObject> m_object;
};

/// A path from text: "M x y", "L x y", "Q" with two points, "C" with three and "Z".
Owned<CGMutablePathRef> pathFromText(const std::string& text);
/// The elements of a path in that form; coordinates have at most six digits, and nothing
/// is smaller than 1e-12.
std::string textOf(CGPathRef path);

// For comparing and printing in assertions.
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
