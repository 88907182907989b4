// The part of UIKit that a drawing framework needs: colours, images, the screen's scale, and the names of a
// notification and a text attribute.
#pragma once

#import <UIKit/NSAttributedString.h>
#import <UIKit/UIApplication.h>
#import <UIKit/UIColor.h>
#import <UIKit/UIImage.h>
#import <UIKit/UIKitDefines.h>
#import <UIKit/UIScreen.h>
