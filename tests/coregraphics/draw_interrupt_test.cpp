// Interrupting paths that take too long.
#include "canvas.h"

#include <CoreGraphics/OZMInterrupt.h>
#include <CoreGraphics/OZMThreadMemory.h>

#include <gtest/gtest.h>

namespace {

struct Interrupt {
    int grantedCalls;
    int calls = 0;
};

/// Draws a path that would take seconds, with an interrupt function that stops it after `grantedCalls` calls.
/// Returns how often the function was called.
int callsUntilInterrupted(int grantedCalls, CGPoint far, void (*draw)(CGContextRef), const Canvas& canvas) {
    Interrupt state = {grantedCalls};
    OZMSetDrawingInterrupt(
        [](void* info) {
            auto& interrupt = *static_cast<Interrupt*>(info);
            return ++interrupt.calls > interrupt.grantedCalls;
        },
        &state);
    OZMTrimDrawingMemory(); // which leaves the function where it is
    CGContextMoveToPoint(canvas, 0, 0);
    for (int i = 0; i < 20'000; ++i)
        CGContextAddCurveToPoint(canvas, i % 31, far.y, far.x, i % 29, i % 23, i % 2 ? 0 : 1000);
    draw(canvas);
    OZMSetDrawingInterrupt(nullptr, nullptr);
    return state.calls;
}

TEST(DrawingInterrupt, AbandonsThePathAndKeepsTheThreadUsable) {
    for (const auto& draw : {CGContextFillPath, CGContextStrokePath, CGContextClip}) {
        for (const CGPoint far : {CGPointMake(31, 1000), CGPointMake(1e9, -1e9)}) {
            const Canvas canvas(32, 1000);
            EXPECT_EQ(callsUntilInterrupted(2, far, draw, canvas), 3);
            EXPECT_FALSE(Owned<CGImageRef>(CGBitmapContextCreateImage(canvas)));
            if (draw == CGContextClip) {
                CGContextFillRect(canvas, CGRectMake(0, 0, 32, 1000));
                EXPECT_EQ(canvas.area(), 0);
            }
            const Canvas next(32, 1000);
            CGContextFillRect(next, CGRectMake(1, 2, 3, 4));
            EXPECT_EQ(next.area(), 12);
            EXPECT_TRUE(Owned<CGImageRef>(CGBitmapContextCreateImage(next)));
        }
    }
}

/// A zigzag in every row, whose edges cross each other at a thousand heights: the edges are few, and what
/// they cost is not.
TEST(DrawingInterrupt, CountsCrossings) {
    const Canvas canvas(200, 2'000);
    Interrupt state = {1};
    OZMSetDrawingInterrupt(
        [](void* info) {
            auto& interrupt = *static_cast<Interrupt*>(info);
            return ++interrupt.calls > interrupt.grantedCalls;
        },
        &state);
    for (int row = 0; row < 2'000; ++row) {
        CGContextMoveToPoint(canvas, 0, row + 0.01);
        for (int i = 0; i < 32; ++i) {
            CGContextAddLineToPoint(canvas, i * 71 % 199, row + 0.99);
            CGContextAddLineToPoint(canvas, i * 37 % 199, row + 0.01);
        }
    }
    CGContextEOFillPath(canvas);
    OZMSetDrawingInterrupt(nullptr, nullptr);
    EXPECT_EQ(state.calls, 2);
}

} // namespace
