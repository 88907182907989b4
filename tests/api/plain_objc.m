// Compiles the public headers as plain Objective-C and uses a declaration that they offer there.
#import <Ozmira/Ozmira.h>

double OzmiraPlainObjectiveCGreen(UIColor* color);

double OzmiraPlainObjectiveCGreen(UIColor* color) {
    const OZMColor components = [color ozm_color];
    return components.g;
}
