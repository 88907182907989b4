#include "owned.h"
#include "paint/gradient.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <span>
#include <thread>
#include <utility>
#include <vector>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

using Bytes = std::array<int, 4>;

Bytes bytesOf(uint32_t pixel) {
    uint8_t bytes[4];
    std::memcpy(bytes, &pixel, sizeof bytes);
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

TEST(ColorSpace, DeviceSpacesAreShared) {
    const Owned<CGColorSpaceRef> first(CGColorSpaceCreateDeviceRGB()), second(CGColorSpaceCreateDeviceRGB());
    const Owned<CGColorSpaceRef> gray(CGColorSpaceCreateDeviceGray());
    EXPECT_EQ(first.get(), second.get());
    EXPECT_EQ(CGColorSpaceGetNumberOfComponents(first), 3u);
    EXPECT_EQ(CGColorSpaceGetModel(first), kCGColorSpaceModelRGB);
    EXPECT_EQ(CGColorSpaceGetNumberOfComponents(gray), 1u);
    EXPECT_EQ(CGColorSpaceGetModel(gray), kCGColorSpaceModelMonochrome);
    EXPECT_EQ(CGColorSpaceGetName(first), nullptr);
}

TEST(ColorSpace, IsFoundByName) {
    const struct {
        CFStringRef name;
        const char* text;
        CGColorSpaceModel model;
    } cases[] = {
        {kCGColorSpaceSRGB, "kCGColorSpaceSRGB", kCGColorSpaceModelRGB},
        {kCGColorSpaceGenericRGB, "kCGColorSpaceGenericRGB", kCGColorSpaceModelRGB},
        {kCGColorSpaceGenericGray, "kCGColorSpaceGenericGray", kCGColorSpaceModelMonochrome},
        {kCGColorSpaceGenericGrayGamma2_2, "kCGColorSpaceGenericGrayGamma2_2", kCGColorSpaceModelMonochrome},
    };
    for (const auto& c : cases) {
        const Owned<CGColorSpaceRef> space(CGColorSpaceCreateWithName(c.name));
        ASSERT_NE(space.get(), nullptr) << c.text;
        EXPECT_EQ(CGColorSpaceGetModel(space), c.model) << c.text;
        const Owned<CFStringRef> found(CGColorSpaceCopyName(space));
        EXPECT_TRUE(CFEqual(found, c.name)) << c.text;
        for (const CFStringEncoding encoding : {kCFStringEncodingUTF8, kCFStringEncodingASCII})
            EXPECT_STREQ(CFStringGetCStringPtr(found, encoding), c.text);
    }
    EXPECT_EQ(CGColorSpaceCreateWithName(nullptr), nullptr);
    EXPECT_EQ(CFStringGetCStringPtr(kCGColorSpaceSRGB, 1), nullptr);
}

TEST(ColorSpace, CalibratedDiffersFromDevice) {
    const CGFloat white[] = {0.95, 1, 1.09};
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateCalibratedRGB(white, nullptr, nullptr, nullptr));
    const Owned<CGColorSpaceRef> device(CGColorSpaceCreateDeviceRGB());
    EXPECT_EQ(CGColorSpaceGetModel(space), kCGColorSpaceModelRGB);
    EXPECT_FALSE(CFEqual(space, device));
    EXPECT_EQ(CGColorSpaceCreateCalibratedRGB(nullptr, nullptr, nullptr, nullptr), nullptr);
}

TEST(Color, KeepsItsComponentsAsGiven) {
    const Owned<CGColorRef> color(CGColorCreateSRGB(-1, 2, 0.5, 0.25));
    ASSERT_EQ(CGColorGetNumberOfComponents(color), 4u);
    const CGFloat expected[] = {-1, 2, 0.5, 0.25};
    for (size_t i = 0; i < 4; ++i) EXPECT_EQ(CGColorGetComponents(color)[i], expected[i]);
    EXPECT_EQ(CGColorGetAlpha(color), 0.25);
    EXPECT_EQ(CGColorSpaceGetName(CGColorGetColorSpace(color)), kCGColorSpaceSRGB);

    const Owned<CGColorRef> gray(CGColorCreateGenericGray(0.5, 0.75));
    EXPECT_EQ(CGColorGetNumberOfComponents(gray), 2u);
    EXPECT_EQ(CGColorGetAlpha(gray), 0.75);
}

TEST(Color, EqualityComparesSpaceAndComponents) {
    const Owned<CGColorRef> red(CGColorCreateSRGB(1, 0, 0, 1)), same(CGColorCreateSRGB(1, 0, 0, 1));
    const Owned<CGColorRef> generic(CGColorCreateGenericRGB(1, 0, 0, 1));
    const Owned<CGColorRef> faint(CGColorCreateCopyWithAlpha(red, 0.5)), copy(CGColorCreateCopy(faint));
    EXPECT_TRUE(CGColorEqualToColor(red, same));
    EXPECT_TRUE(CFEqual(faint, copy));
    EXPECT_FALSE(CGColorEqualToColor(red, generic));
    EXPECT_FALSE(CGColorEqualToColor(red, faint));
    EXPECT_EQ(CGColorGetComponents(faint)[0], 1);
    EXPECT_FALSE(CGColorEqualToColor(red, nullptr));
}

TEST(Color, ConvertsToAPremultipliedPixel) {
    struct Case {
        ozcg::Rgba color;
        double alpha;
        Bytes bytes;
    };
    const Case cases[] = {
        {{1, 0.5, 0, 1}, 1, {255, 128, 0, 255}},   {{1, 0.5, 0, 0.5}, 1, {128, 64, 0, 128}},
        {{1, 0.5, 0, 1}, 0.5, {128, 64, 0, 128}},  {{2, -1, kNaN, 3}, 1, {255, 0, 0, 255}},
        {{2, -1, kNaN, 3}, 0.5, {128, 0, 0, 128}}, {{1, 1, 1, kNaN}, 1, {0, 0, 0, 0}},
        {{1, 1, 1, 1}, -2, {0, 0, 0, 0}},
    };
    for (const Case& c : cases) EXPECT_EQ(bytesOf(ozcg::premultipliedPixel(c.color, c.alpha)), c.bytes);
}

Bytes colorAt(CGGradientRef gradient, double position) {
    uint32_t pixel = 0;
    gradient->colorsAt(std::span(&position, 1), ozcg::PositionOrder::sorted, 0, &pixel);
    return bytesOf(pixel);
}

/// A gradient with stops in device RGB, and access to its colours.
struct RgbGradient {
    RgbGradient(std::vector<CGFloat> components, const CGFloat* locations)
        : gradient(CGGradientCreateWithColorComponents(space, components.data(), locations,
                                                       components.size() / 4)) {}

    Bytes at(double position) const { return colorAt(gradient, position); }

    const Owned<CGColorSpaceRef> space{CGColorSpaceCreateDeviceRGB()};
    const Owned<CGGradientRef> gradient;
};

TEST(Gradient, MixesColorsBeforePremultiplication) {
    const RgbGradient g({1, 0, 0, 1, 0, 0, 1, 0}, nullptr);
    EXPECT_EQ(g.at(0), (Bytes{255, 0, 0, 255}));
    EXPECT_EQ(g.at(1), (Bytes{0, 0, 0, 0}));
    const Bytes middle = g.at(0.5);
    const Bytes expected = {64, 0, 64, 128}; // half red and half blue, at alpha 0.5
    for (size_t i = 0; i < 4; ++i) EXPECT_NEAR(middle[i], expected[i], 1) << i;

    const CGFloat locations[] = {0.2, 0.6, 0.7, 1};
    const RgbGradient bumps({0, 0, 0, 1, 1, 0, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1}, locations);
    for (const auto& [t, red, green, blue] : {std::array{0.1, 0.0, 0.0, 0.0},
                                              {0.3, 0.25, 0.0, 0.0},
                                              {0.5, 0.75, 0.0, 0.0},
                                              {0.625, 0.75, 0.25, 0.0},
                                              {0.675, 0.25, 0.75, 0.0},
                                              {0.775, 0.0, 0.75, 0.25},
                                              {0.925, 0.0, 0.25, 0.75}}) {
        const Bytes found = bumps.at(t);
        EXPECT_NEAR(found[0], 255 * red, 0.5) << t;
        EXPECT_NEAR(found[1], 255 * green, 0.5) << t;
        EXPECT_NEAR(found[2], 255 * blue, 0.5) << t;
    }
}

TEST(Gradient, ClampsComponentsAfterMixing) {
    const RgbGradient g({-1, kNaN, 3, 1, 2, 0, 0, 1}, nullptr);
    const std::pair<double, Bytes> cases[] = {
        {0, {0, 0, 255, 255}}, {0.5, {127, 0, 255, 255}}, {0.8, {255, 0, 153, 255}}, {1, {255, 0, 0, 255}}};
    for (const auto& [t, expected] : cases)
        for (size_t i = 0; i < 4; ++i) EXPECT_NEAR(g.at(t)[i], expected[i], 1) << t << ' ' << i;
}

TEST(Gradient, SortsAndClampsStops) {
    const std::vector<CGFloat> blackToWhite = {0, 0, 0, 1, 1, 1, 1, 1}, whiteFirst = {1, 1, 1, 1, 0, 0, 0, 1};
    const CGFloat swapped[] = {1.5, -2};
    const RgbGradient a(blackToWhite, nullptr), b(whiteFirst, swapped);
    for (const double t : {0.0, 0.25, 0.5, 0.75, 1.0}) EXPECT_EQ(a.at(t), b.at(t)) << t;
}

TEST(Gradient, StopsAtTheSameLocationKeepTheirOrder) {
    const CGFloat middle[] = {0.5, 0.5, 0.5};
    const RgbGradient hard({1, 0, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1}, middle);
    EXPECT_EQ(hard.at(0.499), (Bytes{255, 0, 0, 255}));
    EXPECT_EQ(hard.at(0.501), (Bytes{0, 0, 255, 255}));
    // So many stops that an unstable sort would not keep them in order by chance.
    std::vector<CGFloat> many, place;
    for (int i = 0; i <= 40; ++i) {
        many.insert(many.end(), {i / 40.0, 0, 1 - i / 40.0, 1});
        place.push_back(0.5);
    }
    const RgbGradient crowded(many, place.data());
    EXPECT_EQ(crowded.at(0.499), (Bytes{0, 0, 255, 255}));
    EXPECT_EQ(crowded.at(0.501), (Bytes{255, 0, 0, 255}));
    // Of several stops at 0, the first counts for 0; of several at 1, the last counts for 1.
    const CGFloat ends[] = {0, 0, 1, 1};
    const RgbGradient g({1, 0, 0, 1, 0, 1, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1}, ends);
    EXPECT_EQ(g.at(0), (Bytes{255, 0, 0, 255}));
    EXPECT_EQ(g.at(0.5), (Bytes{0, 255, 0, 255}));
    EXPECT_EQ(g.at(1), (Bytes{0, 0, 255, 255}));
    const CGFloat close[] = {0.5 - 1e-12, std::nextafter(0.5, 1)};
    const RgbGradient nearlyHard({1, 0, 0, 1, 0, 0, 1, 1}, close);
    EXPECT_EQ(nearlyHard.at(0.499), (Bytes{255, 0, 0, 255}));
    EXPECT_EQ(nearlyHard.at(0.501), (Bytes{0, 0, 255, 255}));
    const CGFloat unknown[] = {kNaN};
    EXPECT_EQ(RgbGradient({1, 0, 0, 1}, unknown).at(0.7), (Bytes{255, 0, 0, 255}));
}

TEST(Gradient, NeedsSpaceAndColors) {
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
    const CGFloat components[4] = {};
    EXPECT_EQ(CGGradientCreateWithColorComponents(space, components, nullptr, 0), nullptr);
    EXPECT_EQ(CGGradientCreateWithColorComponents(space, nullptr, nullptr, 1), nullptr);
    EXPECT_EQ(CGGradientCreateWithColorComponents(nullptr, components, nullptr, 1), nullptr);
    EXPECT_EQ(CGGradientCreateWithColorComponents(space, components, nullptr, SIZE_MAX / 2), nullptr);
    EXPECT_EQ(CGGradientCreateWithColors(space, nullptr, nullptr), nullptr);
}

TEST(Gradient, CanBeCreatedFromColors) {
    const Owned<CGColorRef> red(CGColorCreateSRGB(1, 0, 0, 1)), gray(CGColorCreateGenericGray(0.5, 1));
    const void* values[] = {red.get(), gray.get()};
    const Owned<CFArrayRef> colors(CFArrayCreate(nullptr, values, 2, &kCFTypeArrayCallBacks));
    const Owned<CGGradientRef> gradient(CGGradientCreateWithColors(nullptr, colors, nullptr));
    EXPECT_EQ(colorAt(gradient, 0), (Bytes{255, 0, 0, 255}));
    EXPECT_EQ(colorAt(gradient, 1), (Bytes{128, 128, 128, 255}));
    const void* strings[] = {kCGColorSpaceSRGB};
    const Owned<CFArrayRef> wrong(CFArrayCreate(nullptr, strings, 1, &kCFTypeArrayCallBacks));
    EXPECT_EQ(CGGradientCreateWithColors(nullptr, wrong, nullptr), nullptr);
}

TEST(Object, IsRetainedByEveryFunction) {
    const Owned<CGColorSpaceRef> space(
        CGColorSpaceCreateCalibratedRGB(std::array<CGFloat, 3>{1, 1, 1}.data(), nullptr, nullptr, nullptr));
    const CGFloat black[] = {0, 0, 0, 1};
    const Owned<CGGradientRef> gradient(CGGradientCreateWithColorComponents(space, black, nullptr, 1));
    const Owned<CGMutablePathRef> path(CGPathCreateMutable());
    const Owned<CGDataProviderRef> provider(CGDataProviderCreateWithData(nullptr, black, 8, nullptr));
    const auto expectOneMore = [](auto retain, auto release, auto object) {
        const CFIndex before = CFGetRetainCount(object);
        EXPECT_EQ(retain(object), object);
        EXPECT_EQ(CFGetRetainCount(object), before + 1);
        release(object);
        EXPECT_EQ(CFGetRetainCount(object), before);
        EXPECT_EQ(retain(nullptr), nullptr);
        release(nullptr);
    };
    expectOneMore(CGColorSpaceRetain, CGColorSpaceRelease, space.get());
    expectOneMore(CGGradientRetain, CGGradientRelease, gradient.get());
    expectOneMore(CGPathRetain, CGPathRelease, static_cast<CGPathRef>(path.get()));
    expectOneMore(CGDataProviderRetain, CGDataProviderRelease, provider.get());
}

TEST(Object, CountsReferencesFromSeveralThreads) {
    const Owned<CGColorRef> color(CGColorCreateSRGB(1, 0, 0, 1));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int j = 0; j < 10000; ++j) {
                CFRetain(color);
                CGColorRetain(color);
                CFRelease(color);
                CGColorRelease(color);
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(CFGetRetainCount(color), 1);
}

TEST(Object, ArraysHoldReferences) {
    const Owned<CGColorRef> color(CGColorCreateSRGB(1, 0, 0, 1));
    const void* values[] = {color.get()};
    {
        const Owned<CFArrayRef> array(CFArrayCreate(nullptr, values, 1, &kCFTypeArrayCallBacks));
        EXPECT_EQ(CFGetRetainCount(color), 2);
        EXPECT_EQ(CFArrayGetValueAtIndex(array, 0), color.get());
        EXPECT_EQ(CFArrayGetValueAtIndex(array, 1), nullptr);
        EXPECT_EQ(CFArrayGetValueAtIndex(array, -1), nullptr);
    }
    EXPECT_EQ(CFGetRetainCount(color), 1);
    EXPECT_EQ(CFArrayCreate(nullptr, nullptr, 1, nullptr), nullptr);
    EXPECT_EQ(CFArrayCreate(nullptr, values, -1, nullptr), nullptr);
}

TEST(Object, KnowsItsType) {
    const Owned<CGColorRef> color(CGColorCreateSRGB(1, 0, 0, 1));
    const Owned<CGPathRef> path(CGPathCreateMutable());
    const Owned<CFDataRef> data(CFDataCreate(nullptr, nullptr, 0));
    const Owned<CFArrayRef> array(CFArrayCreate(nullptr, nullptr, 0, nullptr));
    const Owned<CGDataProviderRef> provider(CGDataProviderCreateWithCFData(data));
    const Owned<CGContextRef> context(CGBitmapContextCreate(nullptr, 1, 1, 8, 0, CGColorGetColorSpace(color),
                                                            kCGImageAlphaPremultipliedLast));
    const Owned<CGImageRef> image(CGBitmapContextCreateImage(context));
    const RgbGradient gradient({1, 0, 0, 1}, nullptr);
    const std::map<CFTypeID, CFTypeRef> objects = {
        {CGColorGetTypeID(), color.get()},
        {CGColorSpaceGetTypeID(), CGColorGetColorSpace(color)},
        {CGPathGetTypeID(), path.get()},
        {CFDataGetTypeID(), data.get()},
        {CFArrayGetTypeID(), array.get()},
        {CFStringGetTypeID(), kCGColorSpaceSRGB},
        {CGDataProviderGetTypeID(), provider.get()},
        {CGContextGetTypeID(), context.get()},
        {CGImageGetTypeID(), image.get()},
        {CGGradientGetTypeID(), gradient.gradient.get()},
    };
    EXPECT_EQ(objects.size(), 10u); // no two are the same
    for (const auto& [type, object] : objects) EXPECT_EQ(CFGetTypeID(object), type);
}

TEST(Object, NullIsNoObject) {
    EXPECT_EQ(CFRetain(nullptr), nullptr);
    CFRelease(nullptr);
    CGPathRelease(nullptr);
    CGColorRelease(nullptr);
    CGColorSpaceRelease(nullptr);
    CGGradientRelease(nullptr);
    CGImageRelease(nullptr);
    CGDataProviderRelease(nullptr);
    EXPECT_EQ(CFGetRetainCount(nullptr), 0);
    EXPECT_EQ(CFGetTypeID(nullptr), 0u);
    EXPECT_FALSE(CFEqual(nullptr, kCGColorSpaceSRGB));
    EXPECT_FALSE(CFEqual(kCGColorSpaceSRGB, nullptr));
    EXPECT_EQ(CFArrayGetCount(nullptr) + CFDataGetLength(nullptr), 0);
    EXPECT_EQ(CFArrayGetValueAtIndex(nullptr, 0), nullptr);
    EXPECT_EQ(CFDataGetBytePtr(nullptr), nullptr);
    EXPECT_EQ(CFStringGetCStringPtr(nullptr, kCFStringEncodingUTF8), nullptr);
    EXPECT_EQ(CGDataProviderCopyData(nullptr), nullptr);
    EXPECT_EQ(CGColorGetNumberOfComponents(nullptr) + CGColorSpaceGetNumberOfComponents(nullptr), 0u);
    EXPECT_EQ(CGColorGetAlpha(nullptr), 0);
    EXPECT_EQ(CGColorGetColorSpace(nullptr), nullptr);
    EXPECT_EQ(CGColorCreate(nullptr, nullptr), nullptr);
    EXPECT_EQ(CGColorSpaceCopyName(nullptr), nullptr);
    EXPECT_EQ(CGColorGetComponents(nullptr), nullptr);
    EXPECT_EQ(CGColorCreateCopyWithAlpha(nullptr, 1), nullptr);
    EXPECT_EQ(CGColorSpaceGetModel(nullptr), kCGColorSpaceModelUnknown);
}

} // namespace
