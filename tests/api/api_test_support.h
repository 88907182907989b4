// Helpers that the tests of the object layer share.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string_view>

// Some tests pass nil for parameters declared nonnull.
#pragma clang diagnostic ignored "-Wnonnull"

/// Counts its live instances, so that tests can check that something was released.
@interface Counted : NSObject
+ (int)alive;
@end

/// Gives each test a temporary folder and an autorelease pool.
class ApiTest : public testing::Test {
public:
    ApiTest();
    ~ApiTest() override;

    NSURL* folder() const { return url("."); }
    NSURL* url(std::string_view name) const;
    /// Writes a file, and creates the folders in its name.
    NSURL* write(std::string_view name, std::string_view text) const;
    std::filesystem::path path(std::string_view name) const { return m_folder / name; }

private:
    NSAutoreleasePool* m_pool;
    std::filesystem::path m_folder;
};

/// Runs `work` on `count` threads and waits for all of them. Each thread is registered with Foundation and
/// has an autorelease pool.
void onThreads(int count, const std::function<void()>& work);

/// Posts the notification that UIKit posts when memory is low.
void postMemoryWarning();

/// A bitmap context, at first transparent; y points up, and one unit is one pixel.
class Canvas {
public:
    Canvas(size_t width, size_t height);
    ~Canvas() { CGContextRelease(m_context); }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    CGContextRef context() const { return m_context; }
    /// A pixel as 0xRRGGBBAA, premultiplied. Row 0 is the top row.
    uint32_t pixel(size_t x, size_t y) const;

private:
    CGContextRef m_context;
};

/// One pixel of an image, as above. Fails the test and returns 0 if there is no image or no such pixel.
uint32_t pixelOf(CGImageRef image, size_t x, size_t y);

/// A drawing whose upper half is red and whose lower half is blue.
std::string redOverBlue(int width, int height);
/// An 8 x 8 square that names no fill, so the default fill colour fills it.
inline constexpr std::string_view kUnfilled =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="8" height="8"><rect width="8" height="8"/></svg>)";
