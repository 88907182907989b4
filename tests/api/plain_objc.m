// The public headers in plain Objective-C, and what they promise there.
#import <Ozmira/Ozmira.h>

double OzmiraPlainObjectiveCGreen(UIColor* color);

double OzmiraPlainObjectiveCGreen(UIColor* color) {
    const OZMColor components = [color ozm_color];
    return components.g;
}
