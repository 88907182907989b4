// One SVG file that draws itself and hands out images.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <dispatch/dispatch.h>
#import <Foundation/Foundation.h>
#import <UIKit/UIKit.h>

NS_ASSUME_NONNULL_BEGIN

@class OZMConcreteDocument;

/// An SVG file known by URL. Its content is parsed when the document is made, can be dropped with
/// `purgeDocument`, and is parsed again by the next call that needs it.
///
/// Sizes are in points, scales in pixels per point. Documents may be loaded and purged on any thread, but one
/// document must not be drawn, by any of the drawing and image methods, on two threads at once.
@interface OZMDocument : NSObject {
@private
    NSURL* _url;
    OZMConcreteDocument* _concreteDocument;
    CGSize _documentSize;
    dispatch_queue_t _queue;
    BOOL _debugRenderLogging;
}

/// Whether images show their frames: green around the fitted drawing, blue around the image. Off by default.
/// A change empties the shared image cache. Drawing into a context switches it off. Not guarded by a lock.
@property (class, nonatomic) BOOL debugRendering;

/// A document of the file at a URL's path; nil when it can't be opened. A file that is no well-formed SVG
/// gives an empty document.
+ (nullable instancetype)documentWithURL:(NSURL*)url;
/// The document `name`.svg of the main bundle, or, when the name begins with "/", of the file with that
/// absolute, percent-encoded path. Nil when there is none.
+ (nullable instancetype)documentWithName:(NSString*)name;
/// As `documentWithURL:`.
- (nullable instancetype)initWithContentsOfURL:(NSURL*)url NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

/// Where the document came from and is loaded from again.
@property (nonatomic, copy, readonly) NSURL* url;
/// The document's own size, as it was when the document was made; survives a purge.
@property (nonatomic, readonly) CGSize documentSize;
/// The document's own size as the file says now, loading it if need be; zero when it can't be loaded.
@property (nonatomic, readonly) CGSize viewPortSize;
/// The part of the drawing that is shown, in its own units, loading the document if need be; zero when it
/// can't be loaded.
@property (nonatomic, readonly) CGRect viewBox;
/// Always NO.
@property (nonatomic, readonly) BOOL debugRenderLogging;

/// Drops the parsed content and everything cached with it, but no image.
- (void)purgeDocument;
/// Parses the file unless its content is held. Returns what is held then: nil when the file can't be opened.
- (nullable OZMConcreteDocument*)reloadDocument;
/// The parsed content, loading it if need be.
- (nullable OZMConcreteDocument*)concreteDocument;
/// One line per message about the file, each coloured by its level.
- (NSAttributedString*)parseLog;

/// The size of the image that `imageFitToSize:scale:` makes: `documentSize` scaled to fit, rounded up to
/// whole pixels. A component that is not positive sets no limit.
- (CGSize)imageSizeFitToSize:(CGSize)size scale:(CGFloat)scale;

/// As below, without a default fill colour.
- (void)drawInRect:(CGRect)rect inContext:(CGContextRef)context;
/// Renders an image that fits into `rect` at the main screen's scale and draws it in the middle of `rect`,
/// its origin rounded to whole points. As any CGImage, it stands upright where the context's y axis points
/// up. `color` fills what the file gives no fill. Switches `debugRendering` off.
- (void)drawInRect:(CGRect)rect inContext:(CGContextRef)context defaultFillColor:(nullable UIColor*)color;

/// A new image, never from a cache; NULL when the document can't be loaded or the size is impossible. The
/// caller releases it.
- (nullable CGImageRef)createCGImageFitToSize:(CGSize)size
                                        scale:(CGFloat)scale
                             defaultFillColor:(nullable CGColorRef)color CF_RETURNS_RETAINED;

/// The image at the document's own size and the main screen's scale.
- (nullable UIImage*)image;
/// The image of a height in points.
- (nullable UIImage*)imageWithHeight:(CGFloat)height scale:(CGFloat)scale;
- (nullable UIImage*)imageWithHeight:(CGFloat)height
                               scale:(CGFloat)scale
                    defaultFillColor:(nullable UIColor*)color;
- (nullable UIImage*)imageFitToSize:(CGSize)size scale:(CGFloat)scale;
/// The image that fits into `size`, from the shared image cache or rendered and stored there. Nil when the
/// document can't be loaded or the size is impossible.
- (nullable UIImage*)imageFitToSize:(CGSize)size
                              scale:(CGFloat)scale
                   defaultFillColor:(nullable UIColor*)color;

@end

NS_ASSUME_NONNULL_END
