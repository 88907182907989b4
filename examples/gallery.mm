// Draws every document of a folder in one colour, at two scales, into PNG files:
//
//   ozmira_gallery FOLDER OUTPUT
#import <Ozmira/Ozmira.h>

#include <cstdio>

namespace {

constexpr CGFloat kHeight = 32; // points

NSURL* folderURL(const char* path) { return [NSURL fileURLWithPath:@(path) isDirectory:YES]; }

/// Writes `name`@1x.png and `name`@2x.png. Returns false if the document can't be drawn or a file can't be
/// written.
bool writePictures(OZMContainer* container, NSString* name, NSURL* output) {
    OZMDocument* const document = [container documentNamed:name];
    if (!document) return false;
    UIColor* const color = [UIColor colorWithRed:0.1 green:0.3 blue:0.6 alpha:1];
    for (int scale = 1; scale <= 2; ++scale) {
        // The shared image cache keeps the image, so that a view that asks again gets the same object.
        UIImage* const image = [document imageWithHeight:kHeight scale:scale defaultFillColor:color];
        NSString* const file = [NSString stringWithFormat:@"%@@%dx.png", name, scale];
        NSURL* const url = [output URLByAppendingPathComponent:file isDirectory:NO];
        if (!image || ![UIImagePNGRepresentation(image) writeToURL:url atomically:YES]) return false;
        std::printf("%s: %g by %g points\n", file.UTF8String, image.size.width, image.size.height);
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s FOLDER OUTPUT\n", argv[0]);
        return 2;
    }
    int failures = 0;
    @autoreleasepool {
        OZMContainer* const container = [OZMContainer containerWithURL:folderURL(argv[1]) error:nullptr];
        for (NSString* name in [container documentNames]) {
            if (writePictures(container, name, folderURL(argv[2]))) continue;
            std::fprintf(stderr, "%s: no picture\n", name.UTF8String);
            ++failures;
        }
    }
    return failures == 0 ? 0 : 1;
}
