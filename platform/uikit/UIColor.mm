#import <UIKit/UIColor.h>

#include <functional>

namespace {

/// Releases `newSpace`. The caller owns the result.
CGColorRef createColor(CGColorSpaceRef newSpace, const CGFloat* components) {
    CGColorRef color = CGColorCreate(newSpace, components);
    CGColorSpaceRelease(newSpace);
    return color;
}

} // namespace

@interface UIColor ()
- (instancetype)initWithOwnedCGColor:(CGColorRef)color NS_DESIGNATED_INITIALIZER;
@end

@implementation UIColor

+ (UIColor*)blackColor {
    return [self colorWithWhite:0 alpha:1];
}

+ (UIColor*)grayColor {
    return [self colorWithWhite:0.5 alpha:1];
}

+ (UIColor*)whiteColor {
    return [self colorWithWhite:1 alpha:1];
}

+ (UIColor*)clearColor {
    return [self colorWithWhite:0 alpha:0];
}

+ (UIColor*)redColor {
    return [self colorWithRed:1 green:0 blue:0 alpha:1];
}

+ (UIColor*)orangeColor {
    return [self colorWithRed:1 green:0.5 blue:0 alpha:1];
}

+ (UIColor*)colorWithWhite:(CGFloat)white alpha:(CGFloat)alpha {
    return [[[self alloc] initWithWhite:white alpha:alpha] autorelease];
}

+ (UIColor*)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha {
    return [[[self alloc] initWithRed:red green:green blue:blue alpha:alpha] autorelease];
}

+ (UIColor*)colorWithCGColor:(CGColorRef)color {
    return [[[self alloc] initWithCGColor:color] autorelease];
}

- (UIColor*)initWithWhite:(CGFloat)white alpha:(CGFloat)alpha {
    const CGFloat components[] = {white, alpha};
    return [self initWithOwnedCGColor:createColor(CGColorSpaceCreateDeviceGray(), components)];
}

- (UIColor*)initWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha {
    const CGFloat components[] = {red, green, blue, alpha};
    return [self initWithOwnedCGColor:createColor(CGColorSpaceCreateDeviceRGB(), components)];
}

- (UIColor*)initWithCGColor:(CGColorRef)color {
    return [self initWithOwnedCGColor:CGColorRetain(color)];
}

- (instancetype)initWithOwnedCGColor:(CGColorRef)color {
    if ((self = [super init]) && color) {
        _CGColor = color;
        return self;
    }
    [self release];
    return nil;
}

- (void)dealloc {
    CGColorRelease(_CGColor);
    [super dealloc];
}

- (CGColorRef)CGColor {
    return _CGColor;
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return [self retain];
}

- (BOOL)isEqual:(id)other {
    if (self == other) return YES;
    if (![other isKindOfClass:[UIColor class]]) return NO;
    return CGColorEqualToColor(_CGColor, static_cast<UIColor*>(other)->_CGColor);
}

- (NSUInteger)hash {
    NSUInteger hash = 0;
    const CGFloat* components = CGColorGetComponents(_CGColor);
    for (size_t i = 0; i < CGColorGetNumberOfComponents(_CGColor); ++i)
        hash = hash * 31 + std::hash<CGFloat>()(components[i]);
    return hash;
}

@end
