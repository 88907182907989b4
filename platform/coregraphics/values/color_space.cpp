#include "values/color_space.h"

#include "base/immortal.h"
#include "base/out_of_memory.h"
#include "base/ref.h"

#include <array>

namespace {

using ozcg::Immortal;

constinit Immortal<CFString> sRGBName("kCGColorSpaceSRGB");
constinit Immortal<CFString> genericRGBName("kCGColorSpaceGenericRGB");
constinit Immortal<CFString> genericGrayName("kCGColorSpaceGenericGray");
constinit Immortal<CFString> genericGrayGamma22Name("kCGColorSpaceGenericGrayGamma2_2");

constinit Immortal<CGColorSpace> deviceRGBSpace(kCGColorSpaceModelRGB, nullptr);
constinit Immortal<CGColorSpace> deviceGraySpace(kCGColorSpaceModelMonochrome, nullptr);
constinit Immortal<CGColorSpace> sRGBSpace(kCGColorSpaceModelRGB, &sRGBName.value);
constinit Immortal<CGColorSpace> genericRGBSpace(kCGColorSpaceModelRGB, &genericRGBName.value);
constinit Immortal<CGColorSpace> genericGraySpace(kCGColorSpaceModelMonochrome, &genericGrayName.value);
constinit Immortal<CGColorSpace> genericGrayGamma22Space(kCGColorSpaceModelMonochrome,
                                                         &genericGrayGamma22Name.value);

constexpr std::array kNamedSpaces = {&sRGBSpace.value, &genericRGBSpace.value, &genericGraySpace.value,
                                     &genericGrayGamma22Space.value};

} // namespace

const CFStringRef kCGColorSpaceSRGB = &sRGBName.value;
const CFStringRef kCGColorSpaceGenericRGB = &genericRGBName.value;
const CFStringRef kCGColorSpaceGenericGray = &genericGrayName.value;
const CFStringRef kCGColorSpaceGenericGrayGamma2_2 = &genericGrayGamma22Name.value;

CGColorSpace* ozcg::deviceRGB() noexcept { return &deviceRGBSpace.value; }

CGColorSpace* ozcg::deviceGray() noexcept { return &deviceGraySpace.value; }

CFTypeID CGColorSpaceGetTypeID(void) { return static_cast<CFTypeID>(ozcg::TypeId::colorSpace); }

CGColorSpaceRef CGColorSpaceCreateDeviceRGB(void) { return ozcg::retained(ozcg::deviceRGB()); }

CGColorSpaceRef CGColorSpaceCreateDeviceGray(void) { return ozcg::retained(ozcg::deviceGray()); }

CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name) {
    for (CGColorSpace* const space : kNamedSpaces)
        if (name && CFEqual(space->name, name)) return ozcg::retained(space);
    return ozcg::noObject<CGColorSpace>();
}

CGColorSpaceRef CGColorSpaceCreateCalibratedRGB(const CGFloat whitePoint[3], const CGFloat*, const CGFloat*,
                                                const CGFloat*) {
    return whitePoint ? ozcg::noteFailure(ozcg::create<CGColorSpace>()) : ozcg::noObject<CGColorSpace>();
}

CGColorSpaceRef CGColorSpaceRetain(CGColorSpaceRef space) { return ozcg::retained(space); }

void CGColorSpaceRelease(CGColorSpaceRef space) { ozcg::released(space); }

size_t CGColorSpaceGetNumberOfComponents(CGColorSpaceRef space) { return space ? space->components() : 0; }

CGColorSpaceModel CGColorSpaceGetModel(CGColorSpaceRef space) {
    return space ? space->model : kCGColorSpaceModelUnknown;
}

CFStringRef CGColorSpaceGetName(CGColorSpaceRef space) { return space ? space->name : nullptr; }

CFStringRef CGColorSpaceCopyName(CGColorSpaceRef space) { return ozcg::retained(CGColorSpaceGetName(space)); }
