#import <CoreImage/CIColor.h>

@implementation CIColor

@synthesize red = _red;
@synthesize green = _green;
@synthesize blue = _blue;
@synthesize alpha = _alpha;

+ (instancetype)colorWithCGColor:(CGColorRef)color {
    return [[[self alloc] initWithCGColor:color] autorelease];
}

- (instancetype)initWithCGColor:(CGColorRef)color {
    if (!(self = [super init])) return nil;
    if (!color) {
        [self release];
        return nil;
    }
    const CGFloat* components = CGColorGetComponents(color);
    const bool isGray = CGColorSpaceGetModel(CGColorGetColorSpace(color)) == kCGColorSpaceModelMonochrome;
    _red = components[0];
    _green = components[isGray ? 0 : 1];
    _blue = components[isGray ? 0 : 2];
    _alpha = CGColorGetAlpha(color);
    return self;
}

@end
