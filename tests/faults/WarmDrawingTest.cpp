#include "Allocations.h"
#include "Samples.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <gtest/gtest.h>

#include <thread>

using namespace ozm;
using namespace ozm::test;

// Once a thread has drawn a document, drawing it again allocates the bitmap, its context and its image: five
// blocks. The renderer's stack keeps a record of each drawing, so it grows at times.
TEST(WarmDrawing, AllocatesThePictureAlone) {
    constexpr size_t kDrawings = 20, kBlocks = 5, kBytesBesidePixels = 2048;
    for (const Sample& sample : Samples()) {
        // Names and dashes are copied with every record: short names fit into it.
        if (sample.name == "crowded") continue;
        SCOPED_TRACE(sample.name);
        const auto document = Parse(sample.text);
        for (const double side : {300.0, 48.0, 200.0}) {
            CoreGraphicsRenderer renderer;
            renderer.SetDocument(document.get());
            const auto draw = [&] {
                return Image(
                    renderer.createCGImageFitToSize({side, side}, 1, kRenderingStateDefault, nullptr));
            };
            size_t pixelBytes = 0;
            for (size_t i = 0; i < kDrawings; ++i) pixelBytes = PixelsOf(draw()).size();
            const AllocationCount count;
            for (size_t i = 0; i < kDrawings; ++i) draw();
            EXPECT_LE(count.Blocks(), kDrawings * kBlocks + 1);
            EXPECT_LE(count.Bytes(), kDrawings * (pixelBytes + kBytesBesidePixels) + 20'000);
        }
    }
}

// A thread keeps short lists of the paths that it destroys. It must not when a path goes after what it kept.
TEST(WarmParsing, FreesWhatTheThreadKeepsAtItsEnd) {
    const auto parsePath = [] {
        Path path;
        SVGParser().ParsePathData("M1 2L3 4C5 6 7 8 9 10", path);
        return path;
    };
    const int64_t before = LiveBlocks();
    std::thread([&] {
        thread_local Path last = parsePath();
        for (int i = 0; i < 100; ++i) EXPECT_EQ(parsePath(), last);
    }).join();
    EXPECT_EQ(LiveBlocks(), before);
}
