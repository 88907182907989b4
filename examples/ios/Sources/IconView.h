#import <Ozmira/Ozmira.h>
#import <UIKit/UIKit.h>

NS_ASSUME_NONNULL_BEGIN

/// Draws a document in the view's tint colour, fitted into its bounds, without keeping an image of it.
@interface IconView : UIView
/// Set on the main thread.
@property (nonatomic, nullable, strong) OZMDocument* document;
@end

NS_ASSUME_NONNULL_END
