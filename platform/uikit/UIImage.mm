#import <UIKit/UIImage.h>

@implementation UIImage

@synthesize scale = _scale;
@synthesize imageOrientation = _imageOrientation;
@synthesize CGImage = _CGImage;

+ (UIImage*)imageWithCGImage:(CGImageRef)cgImage {
    return [[[self alloc] initWithCGImage:cgImage] autorelease];
}

+ (UIImage*)imageWithCGImage:(CGImageRef)cgImage
                       scale:(CGFloat)scale
                 orientation:(UIImageOrientation)orientation {
    return [[[self alloc] initWithCGImage:cgImage scale:scale orientation:orientation] autorelease];
}

- (instancetype)initWithCGImage:(CGImageRef)cgImage {
    return [self initWithCGImage:cgImage scale:1 orientation:UIImageOrientationUp];
}

- (instancetype)initWithCGImage:(CGImageRef)cgImage
                          scale:(CGFloat)scale
                    orientation:(UIImageOrientation)orientation {
    if (!(self = [super init])) return nil;
    if (!cgImage) {
        [self release];
        return nil;
    }
    _CGImage = CGImageRetain(cgImage);
    _scale = scale > 0 ? scale : 1;
    _imageOrientation = orientation;
    return self;
}

- (void)dealloc {
    CGImageRelease(_CGImage);
    [super dealloc];
}

- (CGSize)size {
    const CGFloat width = static_cast<CGFloat>(CGImageGetWidth(_CGImage)) / _scale;
    const CGFloat height = static_cast<CGFloat>(CGImageGetHeight(_CGImage)) / _scale;
    switch (_imageOrientation) {
    case UIImageOrientationLeft:
    case UIImageOrientationRight:
    case UIImageOrientationLeftMirrored:
    case UIImageOrientationRightMirrored: return CGSizeMake(height, width);
    default: return CGSizeMake(width, height);
    }
}

@end
