// A name for Swift with one argument too few, so that the compiler must refuse it.
#import <Foundation/Foundation.h>

@interface Wrong : NSObject
- (void)drawIcon:(id)icon at:(CGFloat)x NS_SWIFT_NAME(draw(_:));
@end
