// One SVG file that draws itself and hands out images.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <dispatch/dispatch.h>
#import <Foundation/Foundation.h>
#import <Ozmira/OzmiraExport.h>
#import <UIKit/UIKit.h>

NS_ASSUME_NONNULL_BEGIN

@class OZMConcreteDocument;

/// An SVG file known by URL. Its content is parsed when the document is made, can be dropped with
/// `purgeDocument`, and is parsed again by the next call that needs it.
///
/// Sizes are in points, scales in pixels per point. Documents may be loaded and purged on any thread, but the
/// drawing and image methods of one document must not run on two threads at once.
OZM_EXPORT
@interface OZMDocument : NSObject {
@private
    NSURL* _url;
    OZMConcreteDocument* _heldConcreteDocument;
    CGSize _documentSize;
    dispatch_queue_t _queue;
    BOOL _debugRenderLogging;
}

/// Whether images show debug frames: green around the fitted drawing, blue around the image. Off by default.
/// Changing it empties the shared image cache. Drawing into a context switches it off. Not synchronised
/// between threads.
@property (class, nonatomic) BOOL debugRendering;

/// The document of the file at a URL's path; nil if it can't be opened. A file that is not well-formed SVG
/// yields an empty document.
+ (nullable instancetype)documentWithURL:(NSURL*)url NS_SWIFT_NAME(init(url:));
/// The document `name`.svg of the main bundle or, if the name begins with "/", of the file with that
/// absolute, percent-encoded path. Nil if there is none.
+ (nullable instancetype)documentWithName:(NSString*)name NS_SWIFT_NAME(init(named:));
/// Like `documentWithURL:`.
- (nullable instancetype)initWithContentsOfURL:(NSURL*)url NS_DESIGNATED_INITIALIZER
    NS_SWIFT_NAME(init(contentsOf:));
- (instancetype)init NS_UNAVAILABLE;

/// The URL that the document was loaded from and is reloaded from.
@property (nonatomic, copy, readonly) NSURL* url;
/// The document's own size as of its creation; survives a purge.
@property (nonatomic, readonly) CGSize documentSize;
/// The document's own size in the loaded content. Reloads the content if necessary; zero if that fails.
@property (nonatomic, readonly) CGSize viewPortSize;
/// The part of the drawing that is shown, in its own units. Reloads the content if necessary; zero if that
/// fails.
@property (nonatomic, readonly) CGRect viewBox;
/// Always NO.
@property (nonatomic, readonly) BOOL debugRenderLogging;

/// Drops the parsed content and everything cached with it, except images.
- (void)purgeDocument;
/// Parses the file unless its content is loaded. Returns the content; nil if the file can't be opened.
- (nullable OZMConcreteDocument*)reloadDocument NS_SWIFT_UNAVAILABLE("loading is automatic");
/// The parsed content, reloaded if necessary; nil if that fails.
- (nullable OZMConcreteDocument*)concreteDocument NS_SWIFT_UNAVAILABLE("loading is automatic");
/// One line per message about the file, each coloured by its level.
@property (nonatomic, readonly) NSAttributedString* parseLog;

/// The size of the image that `imageFitToSize:scale:` makes: `documentSize` scaled to fit, rounded up to
/// whole pixels. A component that is not positive sets no limit.
- (CGSize)imageSizeFitToSize:(CGSize)size scale:(CGFloat)scale NS_SWIFT_NAME(imageSize(fitting:scale:));

/// Like the method below, without a default fill colour.
- (void)drawInRect:(CGRect)rect inContext:(CGContextRef)context NS_SWIFT_NAME(draw(in:context:));
/// Renders an image that fits into `rect` at the main screen's scale and draws it in the middle of `rect`,
/// its origin rounded to whole points. Like any CGImage, it is upright if the context's y axis points up.
/// `color` fills whatever has no fill of its own in the file. Switches `debugRendering` off.
- (void)drawInRect:(CGRect)rect
           inContext:(CGContextRef)context
    defaultFillColor:(nullable UIColor*)color NS_SWIFT_NAME(draw(in:context:defaultFillColor:));

/// A new image, never from a cache; NULL if the document can't be loaded or no image can have the size. The
/// caller releases it.
- (nullable CGImageRef)createCGImageFitToSize:(CGSize)size
                                        scale:(CGFloat)scale
                             defaultFillColor:(nullable CGColorRef)color CF_RETURNS_RETAINED
    NS_SWIFT_NAME(makeCGImage(fitting:scale:defaultFillColor:));

/// The image at the document's own size and the main screen's scale.
@property (nonatomic, readonly, nullable) UIImage* image;
/// The image of the given height in points.
- (nullable UIImage*)imageWithHeight:(CGFloat)height scale:(CGFloat)scale NS_SWIFT_NAME(image(height:scale:));
/// Like the method above, with a default fill colour.
- (nullable UIImage*)imageWithHeight:(CGFloat)height
                               scale:(CGFloat)scale
                    defaultFillColor:(nullable UIColor*)color
    NS_SWIFT_NAME(image(height:scale:defaultFillColor:));
/// Like the method below, without a default fill colour.
- (nullable UIImage*)imageFitToSize:(CGSize)size scale:(CGFloat)scale NS_SWIFT_NAME(image(fitting:scale:));
/// The image that fits into `size`, taken from the shared image cache, or rendered and stored there. Nil if
/// the document can't be loaded or no image can have the size.
- (nullable UIImage*)imageFitToSize:(CGSize)size
                              scale:(CGFloat)scale
                   defaultFillColor:(nullable UIColor*)color
    NS_SWIFT_NAME(image(fitting:scale:defaultFillColor:));

@end

NS_ASSUME_NONNULL_END
