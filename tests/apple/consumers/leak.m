// Leaks an image, so that the analyzer must find something.
#import <Ozmira/Ozmira.h>

size_t widthOf(OZMDocument* document);
size_t widthOf(OZMDocument* document) {
    CGImageRef image = [document createCGImageFitToSize:CGSizeZero scale:1 defaultFillColor:nil];
    return CGImageGetWidth(image);
}
