#include "base/object.h"

#include "path/path.h"
#include "values/color.h"
#include "values/data.h"

using ozcg::Object;
using ozcg::TypeId;

namespace {

const Object* object(CFTypeRef cf) { return static_cast<const Object*>(cf); }

} // namespace

CFTypeRef CFRetain(CFTypeRef cf) { return ozcg::retained(object(cf)); }

void CFRelease(CFTypeRef cf) { ozcg::released(object(cf)); }

CFIndex CFGetRetainCount(CFTypeRef cf) { return cf ? static_cast<CFIndex>(object(cf)->references()) : 0; }

CFTypeID CFGetTypeID(CFTypeRef cf) { return cf ? static_cast<CFTypeID>(object(cf)->typeId()) : 0; }

Boolean CFEqual(CFTypeRef cf1, CFTypeRef cf2) {
    if (cf1 == cf2) return true;
    if (!cf1 || !cf2 || object(cf1)->typeId() != object(cf2)->typeId()) return false;
    switch (object(cf1)->typeId()) {
    case TypeId::string: return static_cast<CFStringRef>(cf1)->text == static_cast<CFStringRef>(cf2)->text;
    case TypeId::data: return static_cast<CFDataRef>(cf1)->bytes == static_cast<CFDataRef>(cf2)->bytes;
    case TypeId::color: return *static_cast<const CGColor*>(cf1) == *static_cast<const CGColor*>(cf2);
    case TypeId::path: return CGPathEqualToPath(static_cast<CGPathRef>(cf1), static_cast<CGPathRef>(cf2));
    default: return false;
    }
}
