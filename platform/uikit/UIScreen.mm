#import <UIKit/UIScreen.h>

@interface UIScreen ()
- (instancetype)initWithScale:(CGFloat)scale;
@end

@implementation UIScreen

@synthesize scale = _scale;

+ (UIScreen*)mainScreen {
    static UIScreen* const screen = [[UIScreen alloc] initWithScale:2];
    return screen;
}

- (instancetype)initWithScale:(CGFloat)scale {
    if (!(self = [super init])) return nil;
    _scale = scale;
    return self;
}

@end
