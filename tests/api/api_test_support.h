// What the tests of the object layer share.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string_view>

// Tests pass nil where the headers rule it out.
#pragma clang diagnostic ignored "-Wnonnull"

/// Counts its instances; for asking whether something was released.
@interface Counted : NSObject
+ (int)alive;
@end

/// A folder of its own and an autorelease pool for each test.
class ApiTest : public testing::Test {
public:
    ApiTest();
    ~ApiTest() override;

    NSURL* folder() const { return url("."); }
    NSURL* url(std::string_view name) const;
    /// Writes a file, making the folders that its name asks for.
    NSURL* write(std::string_view name, std::string_view text) const;
    std::filesystem::path path(std::string_view name) const { return m_folder / name; }

private:
    NSAutoreleasePool* m_pool;
    std::filesystem::path m_folder;
};

/// Runs `work` on `count` threads, known to Foundation and with a pool each, and waits for all of them.
void onThreads(int count, const std::function<void()>& work);

/// Posts what UIKit posts when memory is short.
void postMemoryWarning();

/// A bitmap context of whole pixels. Starts transparent, y up.
class Canvas {
public:
    Canvas(size_t width, size_t height);
    ~Canvas() { CGContextRelease(m_context); }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    CGContextRef context() const { return m_context; }
    /// 0xRRGGBBAA, premultiplied; row 0 is the top.
    uint32_t pixel(size_t x, size_t y) const;

private:
    CGContextRef m_context;
};

/// One pixel of an image, as above. Fails the test and gives 0 when there is no image or no such pixel.
uint32_t pixelOf(CGImageRef image, size_t x, size_t y);

/// A drawing of the size with a red upper and a blue lower half.
std::string redOverBlue(int width, int height);
/// A square drawing that its default fill colour fills.
inline constexpr std::string_view kUnfilled =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="8" height="8"><rect width="8" height="8"/></svg>)";
