// GNUstep makes what key-value observing needs when it is first used, where a second thread that uses it
// meanwhile does not wait. When this file is loaded there is one thread.
#import <Foundation/Foundation.h>

@interface OZMKeyValueObserving : NSObject
@end

@implementation OZMKeyValueObserving
+ (void)load {
    NSObject* const object = [[NSObject alloc] init];
    [object willChangeValueForKey:@"description"];
    [object didChangeValueForKey:@"description"];
    [object release];
}
@end
