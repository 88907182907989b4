// Paths that take too long, and the way out of them.
#include "canvas.h"

#include <CoreGraphics/OZMInterrupt.h>

#include <gtest/gtest.h>

namespace {

struct Patience {
    int left;
    int asked = 0;
};

// A path that takes seconds, given up at the question after `patience`; then how often it was asked.
int questions(int patience, CGPoint far, void (*use)(CGContextRef), const Canvas& canvas) {
    Patience state = {patience};
    OZMSetDrawingInterrupt(
        [](void* info) {
            auto& p = *static_cast<Patience*>(info);
            return ++p.asked > p.left;
        },
        &state);
    CGContextMoveToPoint(canvas, 0, 0);
    for (int i = 0; i < 20'000; ++i)
        CGContextAddCurveToPoint(canvas, i % 31, far.y, far.x, i % 29, i % 23, i % 2 ? 0 : 1000);
    use(canvas);
    OZMSetDrawingInterrupt(nullptr, nullptr);
    return state.asked;
}

TEST(Interrupt, GivesUpAPathAndKeepsTheThreadUsable) {
    for (const auto& use : {CGContextFillPath, CGContextStrokePath, CGContextClip}) {
        for (const CGPoint far : {CGPointMake(31, 1000), CGPointMake(1e9, -1e9)}) {
            const Canvas canvas(32, 1000);
            EXPECT_EQ(questions(2, far, use, canvas), 3);
            EXPECT_FALSE(Owned<CGImageRef>(CGBitmapContextCreateImage(canvas)));
            if (use == CGContextClip) {
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

} // namespace
