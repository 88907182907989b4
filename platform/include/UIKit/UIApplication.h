#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

/// Posted when memory is short. Only programs and tests post it; this library does not.
UIKIT_EXTERN NSString* const UIApplicationDidReceiveMemoryWarningNotification;

NS_ASSUME_NONNULL_END
