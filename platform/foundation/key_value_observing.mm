// GNUstep sets up key-value observing on first use, and a second thread that uses it meanwhile does not wait
// for that. The first use is therefore made here, when the program is loaded and has only one thread.
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
