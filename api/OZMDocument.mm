#import <Ozmira/OZMDocument.h>

#include "dispatch_helpers.h"
#include "manual_retain_release.h"
#include "OZMConcreteDocument.h"
#include "thread_memory.h"

#import <Ozmira/OZMImageCache.h>
#import <Ozmira/UIColor+OZMColor.h>

#include <Ozmira/OZMFitToSize.h>

#include <cmath>

namespace {

BOOL debugRenderingIsOn = NO;

/// The colour of a log level as text attributes; nil for an unknown level.
NSDictionary* textAttributes(ozm::Log::Level level) {
    UIColor* color = nil;
    switch (level) {
    case ozm::Log::Level::Error: color = [UIColor redColor]; break;
    case ozm::Log::Level::Warning: color = [UIColor orangeColor]; break;
    case ozm::Log::Level::Info: color = [UIColor blackColor]; break;
    case ozm::Log::Level::Debug: color = [UIColor grayColor]; break;
    }
    return color ? @{NSForegroundColorAttributeName : color} : nil;
}

/// Pixels per point of the main screen.
CGFloat mainScreenScale() {
#if TARGET_OS_VISION // has no UIScreen
    const CGFloat scale = [UITraitCollection currentTraitCollection].displayScale;
    return scale > 0 ? scale : 2; // not specified outside of a view's drawing
#else
    return [UIScreen mainScreen].scale;
#endif
}

NSAttributedString* logLine(const ozm::Log::Entry& entry) {
    NSString* const text = [NSString stringWithFormat:@"%s", ozm::to_string(entry).c_str()];
    return [[[NSMutableAttributedString alloc] initWithString:text
                                                   attributes:textAttributes(entry.level)] autorelease];
}

} // namespace

@interface OZMDocument ()
/// Nil after a purge. Atomic, so that a purge on one thread does not free content that another thread draws.
@property (atomic, retain) OZMConcreteDocument* heldConcreteDocument;
@end

@implementation OZMDocument

@synthesize url = _url;
@synthesize heldConcreteDocument = _heldConcreteDocument;
@synthesize documentSize = _documentSize;
@synthesize debugRenderLogging = _debugRenderLogging;

+ (BOOL)debugRendering {
    return debugRenderingIsOn;
}

+ (void)setDebugRendering:(BOOL)debugRendering {
    if (debugRendering == debugRenderingIsOn) return;
    debugRenderingIsOn = debugRendering;
    [[OZMImageCache sharedImageCache] purgeCache];
}

+ (instancetype)documentWithURL:(NSURL*)url {
    return [[[self alloc] initWithContentsOfURL:url] autorelease];
}

+ (instancetype)documentWithName:(NSString*)name {
    if (!name) return nil; // for nil, a bundle would return any of its files
    NSURL* const url = [name hasPrefix:@"/"]
                           ? [NSURL URLWithString:name]
                           : [[NSBundle mainBundle] URLForResource:name withExtension:@"svg"];
    if (!url) return nil;
    return [[[self alloc] initWithContentsOfURL:url] autorelease];
}

- (instancetype)initWithContentsOfURL:(NSURL*)url {
    if (!(self = [super init])) return nil;
    _heldConcreteDocument = [[OZMConcreteDocument alloc] initWithContentsOfURL:url];
    if (!_heldConcreteDocument) {
        [self release];
        return nil;
    }
    _url = [url copy];
    _documentSize = _heldConcreteDocument.documentState->m_renderer.ViewPortSize();
    _queue = dispatch_queue_create("OZMDocumentQueue", nullptr);
    return self;
}

- (void)dealloc {
    if (_queue) dispatch_release(_queue);
    [_heldConcreteDocument release];
    [_url release];
    [super dealloc];
}

- (void)purgeDocument {
    self.heldConcreteDocument = nil;
    ozm::freeKeptMemory(); // this thread still holds the document's memory for reuse
}

- (OZMConcreteDocument*)reloadDocument {
    OZMConcreteDocument* document = nil;
    ozm::dispatchSync(_queue, [&] {
        document = [self.heldConcreteDocument retain];
        if (document) return;
        document = [[OZMConcreteDocument alloc] initWithContentsOfURL:_url];
        self.heldConcreteDocument = document;
    });
    return [document autorelease];
}

- (OZMConcreteDocument*)concreteDocument {
    OZMConcreteDocument* const loaded = self.heldConcreteDocument;
    return loaded ? loaded : [self reloadDocument];
}

- (CGSize)viewPortSize {
    OZMConcreteDocument* const document = [self concreteDocument];
    return document ? document.documentState->m_renderer.ViewPortSize() : CGSizeZero;
}

- (CGRect)viewBox {
    OZMConcreteDocument* const document = [self concreteDocument];
    return document ? document.documentState->m_renderer.ViewBox() : CGRectZero;
}

- (NSAttributedString*)parseLog {
    NSMutableAttributedString* const text = [[[NSMutableAttributedString alloc] init] autorelease];
    OZMConcreteDocument* const document = [self concreteDocument];
    const ozm::Log* const log = document ? document.documentState->m_log.get() : nullptr;
    if (!log) return text;
    for (const ozm::Log::Entry& entry : log->entries) [text appendAttributedString:logLine(entry)];
    return text;
}

- (CGSize)imageSizeFitToSize:(CGSize)size scale:(CGFloat)scale {
    return ozm::FitToPixels(_documentSize, size, scale);
}

- (void)drawInRect:(CGRect)rect inContext:(CGContextRef)context {
    [self drawInRect:rect inContext:context defaultFillColor:nil];
}

- (void)drawInRect:(CGRect)rect inContext:(CGContextRef)context defaultFillColor:(UIColor*)color {
    [[self class] setDebugRendering:NO];
    const CGFloat scale = mainScreenScale();
    CGImageRef image = [self createCGImageFitToSize:rect.size scale:scale defaultFillColor:color.CGColor];
    const CGFloat width = static_cast<CGFloat>(CGImageGetWidth(image)) / scale;
    const CGFloat height = static_cast<CGFloat>(CGImageGetHeight(image)) / scale;
    const CGFloat x = std::round(rect.origin.x + (rect.size.width - width) * 0.5);
    const CGFloat y = std::round(rect.origin.y + (rect.size.height - height) * 0.5);
    CGContextDrawImage(context, CGRectMake(x, y, width, height), image);
    CGImageRelease(image);
}

- (CGImageRef)createCGImageFitToSize:(CGSize)size scale:(CGFloat)scale defaultFillColor:(CGColorRef)color {
    ozm::RenderingState state = ozm::kRenderingStateDefault;
    if (color) state.fillColor = OZMColorFromCGColor(color);
    OZMConcreteDocument* const document = [self concreteDocument];
    if (!document) return nullptr;
    ozm::CoreGraphicsRenderer& renderer = document.documentState->m_renderer;
    renderer.SetDebugRendering(debugRenderingIsOn);
    return renderer.createCGImageFitToSize(size, scale, state, nullptr);
}

- (UIImage*)image {
    return [self imageFitToSize:CGSizeZero scale:mainScreenScale()];
}

- (UIImage*)imageWithHeight:(CGFloat)height scale:(CGFloat)scale {
    return [self imageFitToSize:CGSizeMake(0, height) scale:scale];
}

- (UIImage*)imageWithHeight:(CGFloat)height scale:(CGFloat)scale defaultFillColor:(UIColor*)color {
    return [self imageFitToSize:CGSizeMake(0, height) scale:scale defaultFillColor:color];
}

- (UIImage*)imageFitToSize:(CGSize)size scale:(CGFloat)scale {
    return [self imageFitToSize:size scale:scale defaultFillColor:nil];
}

- (UIImage*)imageFitToSize:(CGSize)size scale:(CGFloat)scale defaultFillColor:(UIColor*)color {
    OZMImageCache* const cache = [OZMImageCache sharedImageCache];
    OZMImageCacheKey* const key = [[[OZMImageCacheKey alloc] initWithURL:_url
                                                               imageSize:size
                                                                   scale:scale
                                                               fillColor:color] autorelease];
    if (UIImage* const cached = [cache imageForKey:key]) return cached;
    CGImageRef rendered = [self createCGImageFitToSize:size scale:scale defaultFillColor:color.CGColor];
    if (!rendered) return nil;
    UIImage* const image = [UIImage imageWithCGImage:rendered scale:scale orientation:UIImageOrientationUp];
    CFRelease(rendered);
    [cache setImage:image forKey:key];
    return image;
}

@end
