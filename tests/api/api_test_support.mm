#include "api_test_support.h"

#import <UIKit/UIKit.h>

#include <fstream>
#include <stdlib.h>
#include <thread>
#include <vector>

namespace {
std::atomic<int> aliveCount;
} // namespace

@implementation Counted
+ (int)alive {
    return aliveCount;
}
- (instancetype)init {
    ++aliveCount;
    return [super init];
}
- (void)dealloc {
    --aliveCount;
    [super dealloc];
}
@end

ApiTest::ApiTest() : m_pool([[NSAutoreleasePool alloc] init]) {
    std::string pattern = testing::TempDir() + "ozmira-XXXXXX";
    m_folder = mkdtemp(pattern.data());
}

ApiTest::~ApiTest() {
    [m_pool drain];
    std::filesystem::remove_all(m_folder);
}

NSURL* ApiTest::url(std::string_view name) const {
    const std::string full = name == "." ? m_folder.string() : path(name).string();
    return [NSURL fileURLWithPath:[NSString stringWithUTF8String:full.c_str()]];
}

NSURL* ApiTest::write(std::string_view name, std::string_view text) const {
    std::filesystem::create_directories(path(name).parent_path());
    std::ofstream(path(name)) << text;
    return url(name);
}

void onThreads(int count, const std::function<void()>& work) {
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back([&] {
            GSRegisterCurrentThread();
            @autoreleasepool {
                work();
            }
            GSUnregisterCurrentThread();
        });
    for (std::thread& thread : threads) thread.join();
}

void postMemoryWarning() {
    [[NSNotificationCenter defaultCenter]
        postNotificationName:UIApplicationDidReceiveMemoryWarningNotification
                      object:nil];
}

Canvas::Canvas(size_t width, size_t height) {
    CGColorSpaceRef rgb = CGColorSpaceCreateDeviceRGB();
    m_context =
        CGBitmapContextCreate(nullptr, width, height, 8, width * 4, rgb, kCGImageAlphaPremultipliedLast);
    CGColorSpaceRelease(rgb);
}

uint32_t Canvas::pixel(size_t x, size_t y) const {
    const auto* bytes = static_cast<const uint8_t*>(CGBitmapContextGetData(m_context)) +
                        y * CGBitmapContextGetBytesPerRow(m_context) + x * 4;
    return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

uint32_t pixelOf(CGImageRef image, size_t x, size_t y) {
    const size_t width = CGImageGetWidth(image);
    const size_t height = CGImageGetHeight(image);
    if (x >= width || y >= height) {
        ADD_FAILURE() << "no pixel " << x << ", " << y << " in an image of " << width << " by " << height;
        return 0;
    }
    const Canvas canvas(width, height);
    CGContextDrawImage(canvas.context(),
                       CGRectMake(0, 0, static_cast<CGFloat>(width), static_cast<CGFloat>(height)), image);
    return canvas.pixel(x, y);
}

std::string redOverBlue(int width, int height) {
    const auto half = [width, height](int y, const char* color) {
        return "<rect width='" + std::to_string(width) + "' y='" + std::to_string(y) + "' height='" +
               std::to_string(height / 2) + "' fill='" + color + "'/>";
    };
    return "<svg xmlns='http://www.w3.org/2000/svg' width='" + std::to_string(width) + "' height='" +
           std::to_string(height) + "'>" + half(0, "red") + half(height / 2, "blue") + "</svg>";
}
