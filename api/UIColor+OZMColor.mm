#import <Ozmira/UIColor+OZMColor.h>

#include "dispatch_helpers.h"

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
    if (CGColorGetColorSpace(color) == deviceRGBColorSpace()) {
        const CGFloat* components = CGColorGetComponents(color);
        return {components[0], components[1], components[2], components[3]};
    }
    CIColor* components = [CIColor colorWithCGColor:color];
    return {components.red, components.green, components.blue, components.alpha};
}

@implementation UIColor (OZMColor)

- (OZMColor)ozm_color {
    return OZMColorFromCGColor(self.CGColor);
}

@end
