#include "base/object.h"

#include "base/ref.h"

using ozcg::Object;

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
    return object(cf1)->isEqualTo(*object(cf2));
}
