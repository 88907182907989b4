#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

/// Attribute of a text's colour, a UIColor.
UIKIT_EXTERN NSString* const NSForegroundColorAttributeName;

NS_ASSUME_NONNULL_END
