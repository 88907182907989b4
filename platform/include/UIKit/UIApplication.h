#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

/// Posted when memory is short. Nothing here posts it: programs and tests do.
UIKIT_EXTERN NSString* const UIApplicationDidReceiveMemoryWarningNotification;

NS_ASSUME_NONNULL_END
