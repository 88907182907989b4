// Colours, images and the screen.
#include "api_test_support.h"

#import <CoreImage/CoreImage.h>
#import <Ozmira/UIColor+OZMColor.h>
#import <UIKit/UIKit.h>

#include <Ozmira/ozmStyle.h>

#include <spng.h>
#include <vector>

/// The green component of a colour, read by code in plain Objective-C (plain_objc.m).
extern "C" double OzmiraPlainObjectiveCGreen(UIColor* color);

namespace {

using UIKitTest = ApiTest;

/// The components of a core colour, for comparing and printing.
std::vector<double> components(const ozm::Color& color) { return {color.r, color.g, color.b, color.a}; }

UIColor* colorInSpace(CGColorSpaceRef newSpace, std::initializer_list<CGFloat> values) {
    CGColorRef color = CGColorCreate(newSpace, values.begin());
    UIColor* const result = [UIColor colorWithCGColor:color];
    CGColorRelease(color);
    CGColorSpaceRelease(newSpace);
    return result;
}

TEST_F(UIKitTest, ColorsConvertToCoreColors) {
    const CGFloat white[] = {0.9, 1, 1};
    CGColorSpaceRef const calibrated = CGColorSpaceCreateCalibratedRGB(white, nullptr, nullptr, nullptr);
    const std::pair<UIColor*, std::vector<double>> cases[] = {
        {UIColor.blackColor, {0, 0, 0, 1}},
        {UIColor.grayColor, {0.5, 0.5, 0.5, 1}},
        {UIColor.whiteColor, {1, 1, 1, 1}},
        {UIColor.clearColor, {0, 0, 0, 0}},
        {UIColor.redColor, {1, 0, 0, 1}},
        {UIColor.orangeColor, {1, 0.5, 0, 1}},
        {[UIColor colorWithWhite : 0.25 alpha : 0.5], { 0.25, 0.25, 0.25, 0.5 }},
        {[UIColor colorWithRed : -1 green : 0.2 blue : 2 alpha : 0.4], { -1, 0.2, 2, 0.4 }},
        {colorInSpace(CGColorSpaceCreateWithName(kCGColorSpaceSRGB), {0.1, 0.2, 0.3, 0.4}),
         {0.1, 0.2, 0.3, 0.4}},
        {colorInSpace(CGColorSpaceCreateWithName(kCGColorSpaceGenericGray), {0.7, 0.1}),
         {0.7, 0.7, 0.7, 0.1}},
        {colorInSpace(calibrated, {0.4, 0.3, 0.2, 0.1}), {0.4, 0.3, 0.2, 0.1}},
        {nil, {0, 0, 0, 0}},
    };
    for (const auto& [color, expected] : cases) {
        EXPECT_EQ(components([color ozm_color]), expected);
        EXPECT_EQ(components(OZMColorFromCGColor(color.CGColor)), expected);
        CIColor* const read = [CIColor colorWithCGColor:color.CGColor];
        EXPECT_EQ(components({read.red, read.green, read.blue, read.alpha}), expected);
    }
    EXPECT_EQ(OzmiraPlainObjectiveCGreen([UIColor colorWithRed:0.1 green:0.7 blue:0.2 alpha:1]), 0.7);
}

TEST_F(UIKitTest, EqualColorsHashEqually) {
    UIColor* const color = [UIColor colorWithRed:0 green:0.5 blue:1 alpha:1];
    UIColor* const same = [UIColor colorWithRed:-0.0 green:0.5 blue:1 alpha:1];
    EXPECT_TRUE([color isEqual:same]);
    EXPECT_EQ(color.hash, same.hash);
    EXPECT_TRUE([color isEqual:[[color copy] autorelease]]);
    for (id other in @[
             [UIColor colorWithRed:0 green:0.5 blue:1 alpha:0.5], [UIColor colorWithWhite:0 alpha:1], @"color"
         ])
        EXPECT_FALSE([color isEqual:other]) << [[other description] UTF8String];
    EXPECT_FALSE([UIColor.blackColor isEqual:[UIColor colorWithRed:0 green:0 blue:0 alpha:1]]);
}

/// 4 x 2 pixels. Top row: opaque red, half-transparent green, blue at a quarter, transparent. Bottom row:
/// black.
CGImageRef createSampleImage() {
    const Canvas canvas(4, 2);
    const auto fill = [&](CGRect rect, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
        CGContextSetRGBFillColor(canvas.context(), red, green, blue, alpha);
        CGContextFillRect(canvas.context(), rect);
    };
    fill(CGRectMake(0, 0, 4, 1), 0, 0, 0, 1);
    fill(CGRectMake(0, 1, 1, 1), 1, 0, 0, 1);
    fill(CGRectMake(1, 1, 1, 1), 0, 1, 0, 0.5);
    fill(CGRectMake(2, 1, 1, 1), 0, 0, 1, 0.25);
    return CGBitmapContextCreateImage(canvas.context());
}

TEST_F(UIKitTest, ImageSizeIsInPointsAndFollowsTheOrientation) {
    CGImageRef pixels = createSampleImage();
    struct {
        UIImageOrientation orientation;
        CGFloat scale;
        CGSize expected;
    } const cases[] = {
        {UIImageOrientationUp, 1, {4, 2}},
        {UIImageOrientationUp, 2, {2, 1}},
        {UIImageOrientationDownMirrored, 1, {4, 2}},
        {UIImageOrientationLeft, 2, {1, 2}},
        {UIImageOrientationRightMirrored, 1, {2, 4}},
        {UIImageOrientationUp, 0, {4, 2}},
    };
    for (const auto& test : cases) {
        UIImage* const image = [UIImage imageWithCGImage:pixels
                                                   scale:test.scale
                                             orientation:test.orientation];
        EXPECT_TRUE(CGSizeEqualToSize(image.size, test.expected))
            << image.size.width << " " << image.size.height;
        EXPECT_EQ(image.CGImage, pixels);
        EXPECT_EQ(image.imageOrientation, test.orientation);
    }
    CGImageRelease(pixels);
    EXPECT_EQ([UIImage imageWithCGImage:nullptr], nil);
}

TEST_F(UIKitTest, PNGContainsPixelsAndResolution) {
    CGImageRef pixels = createSampleImage();
    NSData* const file = UIImagePNGRepresentation([UIImage imageWithCGImage:pixels
                                                                      scale:2
                                                                orientation:UIImageOrientationUp]);
    CGImageRelease(pixels);

    const std::unique_ptr<spng_ctx, void (*)(spng_ctx*)> decoder(spng_ctx_new(0), spng_ctx_free);
    spng_set_png_buffer(decoder.get(), file.bytes, file.length);
    spng_ihdr header{};
    ASSERT_EQ(spng_get_ihdr(decoder.get(), &header), 0);
    EXPECT_EQ(header.width, 4u);
    EXPECT_EQ(header.height, 2u);
    std::vector<uint8_t> decoded(32);
    ASSERT_EQ(spng_decode_image(decoder.get(), decoded.data(), decoded.size(), SPNG_FMT_RGBA8, 0), 0);
    EXPECT_EQ(decoded, (std::vector<uint8_t>{255, 0, 0, 255, 0, 255, 0, 128, 0, 0, 255, 64,  0, 0, 0, 0, //
                                             0,   0, 0, 255, 0, 0,   0, 255, 0, 0, 0,   255, 0, 0, 0, 255}));
    spng_phys resolution{};
    ASSERT_EQ(spng_get_phys(decoder.get(), &resolution), 0);
    EXPECT_EQ(resolution.ppu_x, 5669u); // 144 dpi
    EXPECT_EQ(UIImagePNGRepresentation(nil), nil);
}

} // namespace
