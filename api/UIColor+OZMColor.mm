#import <Ozmira/UIColor+OZMColor.h>

#include "dispatch_helpers.h"
#include "manual_retain_release.h"

#import <CoreImage/CoreImage.h>

namespace {

/// Borrowed; created once and kept.
CGColorSpaceRef deviceRGBColorSpace() {
    static dispatch_once_t once;
    static CGColorSpaceRef space;
    ozm::dispatchOnce(once, [] { space = CGColorSpaceCreateDeviceRGB(); });
    return space;
}

} // namespace

OZMColor OZMColorFromCGColor(CGColorRef color) {
    if (!color) return {};
    const CGFloat* const rgba = CGColorGetComponents(color);
    if (rgba && CGColorGetColorSpace(color) == deviceRGBColorSpace())
        return {rgba[0], rgba[1], rgba[2], rgba[3]};
    CIColor* components = [CIColor colorWithCGColor:color];
    return {components.red, components.green, components.blue, components.alpha};
}

@implementation UIColor (OZMColor)

- (OZMColor)ozm_color {
    return OZMColorFromCGColor(self.CGColor);
}

@end
