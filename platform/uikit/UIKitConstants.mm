#import <UIKit/NSAttributedString.h>
#import <UIKit/UIApplication.h>

NSString* const NSForegroundColorAttributeName = @"NSColor";
NSString* const UIApplicationDidReceiveMemoryWarningNotification =
    @"UIApplicationDidReceiveMemoryWarningNotification";
