#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

/// The attribute that sets the colour of text, a UIColor.
UIKIT_EXTERN NSString* const NSForegroundColorAttributeName;

NS_ASSUME_NONNULL_END
