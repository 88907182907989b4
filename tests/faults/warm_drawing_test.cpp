#include "allocations.h"
#include "samples.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <CoreGraphics/OZMThreadMemory.h>

#include <gtest/gtest.h>

#include <thread>

using namespace ozm;
using namespace ozm::test;

#ifndef OZMIRA_SANITIZED // With sanitizers memory is not reused, because they find more errors that way.
// Once a thread has drawn a document, drawing it again allocates only the bitmap, its context and its image:
// five blocks. The renderer's stack keeps a record of each drawing, so it grows occasionally.
TEST(WarmDrawing, AllocatesOnlyThePicture) {
    constexpr size_t kDrawings = 20, kBlocks = 5, kBytesBesidePixels = 2048;
    for (const Sample& sample : Samples()) {
        // Each record copies names and dashes, and long names need memory of their own.
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
            EXPECT_LE(count.Bytes(), kDrawings * (pixelBytes + kBytesBesidePixels) + 20'000);
            EXPECT_LE(count.Blocks(), kDrawings * kBlocks + 1);
        }
    }
}
#endif

// What a thread keeps to draw again goes when it is trimmed, and comes back.
TEST(WarmDrawing, KeepsNothingOnceTrimmed) {
    const auto drawAll = [] {
        for (const Sample& sample : Samples()) {
            const auto document = Parse(sample.text);
            CoreGraphicsRenderer renderer;
            renderer.SetDocument(document.get());
            EXPECT_TRUE(
                Image(renderer.createCGImageFitToSize({300, 300}, 1, kRenderingStateDefault, nullptr)));
        }
    };
    const auto trim = [] {
        TrimThreadMemory();
        OZMTrimDrawingMemory();
    };
    drawAll(); // Creates what all threads share, and the objects that hold buffers.
    trim();
    const int64_t before = LiveBlocks();
    drawAll();
#ifndef OZMIRA_SANITIZED
    EXPECT_GT(LiveBlocks(), before + 5);
#endif
    trim();
    trim();
    EXPECT_EQ(LiveBlocks(), before);
}

// A thread keeps the memory of the lists that it destroys until it ends. It must also free those of a
// document that is destroyed while the thread ends.
TEST(WarmParsing, ReusesTheListsOfEarlierDocuments) {
    std::string text = "<svg><path d='M1 2h";
    for (const char* command : {"l1 2", "c1 2 3 4 5 6", "l1 2 3 4 5 6 7 8", "h1 2 3 4 5", "v1"})
        for (int i = 0; i < 40; ++i) text += command;
    text += "'/></svg>";
    const auto parse = [&] { return SVGParser().CreateDocumentWithSVGData(text.c_str()); };
    const int64_t before = LiveBlocks();
    std::thread([&] {
        thread_local const std::unique_ptr<Document> last = parse();
        size_t blocks[3] = {};
        for (size_t& count : blocks) {
            const AllocationCount allocations;
            const auto document = parse();
            EXPECT_EQ(document->elements.back().path, last->elements.back().path);
            count = allocations.Blocks();
        }
        EXPECT_GT(blocks[0], 200u); // a list for each command
#ifndef OZMIRA_SANITIZED
        EXPECT_LT(blocks[2], blocks[0] / 2);
#endif
    }).join();
    EXPECT_EQ(LiveBlocks(), before);
}

TEST(WarmParsing, KeepsLittleOfALargeDocumentUntilTrimmed) {
    std::string text = "<svg><path d='M1 2";
    for (int i = 0; i < 50'000; ++i) text += "h1";
    const auto parse = [&] {
        EXPECT_EQ(SVGParser().CreateDocumentWithSVGData((text + "'/></svg>").c_str())->elements.size(), 2u);
    };
    parse(); // Creates what all threads share.
    TrimThreadMemory();
    const int64_t before = LiveBlocks();
    parse();
    const int64_t kept = LiveBlocks() - before;
    EXPECT_LT(kept, 20'000);
#ifndef OZMIRA_SANITIZED
    EXPECT_GT(kept, 500);
#endif
    TrimThreadMemory();
    EXPECT_EQ(LiveBlocks(), before);
}

#ifndef OZMIRA_SANITIZED
TEST(WarmParsing, AShortPathAllocatesNothing) {
    const auto blocksOf = [](const char* text) {
        size_t blocks = 0;
        for (int i = 0; i < 3; ++i) {
            const AllocationCount allocations;
            SVGParser().CreateDocumentWithSVGData(text);
            blocks = allocations.Blocks();
        }
        return blocks;
    };
    EXPECT_EQ(blocksOf("<svg><path d='M1 2h1l2 3c1 2 3 4 5 6z'/></svg>"), blocksOf("<svg><rect/></svg>"));
}
#endif
