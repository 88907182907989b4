// Every single allocation of parsing and drawing fails once by itself, and once together with all that
// follow. Nothing may leak, a result must be complete or missing, and later results must be correct again.
#include "fail_each_allocation.h"
#include "samples.h"

#include <Ozmira/ozmDebug.h>
#include <Ozmira/SVG/ozmSVGParser.h>

#include <gtest/gtest.h>
#include <limits>

#include <thread>

using namespace ozm;
using namespace ozm::test;

namespace {

std::string TextOf(const Document& document) {
    std::string text = std::to_string(document.viewBox.size.x) + '\n';
    for (const Element& element : document.elements)
        text += element.id + to_string(element) + std::to_string(element.styleIndex) + '\n';
    for (const Style& style : document.styles) text += std::to_string(style.properties.size()) + ' ';
    for (const Definition& definition : document.definitions) text += definition.id + '\n';
    return text;
}

class AllocationFailure : public testing::TestWithParam<Sample> {};

/// Creates an object of every kind and draws with them.
Image DrawThroughEveryObject() {
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
    const Owned<CGContextRef> context(
        CGBitmapContextCreate(nullptr, 40, 40, 8, 0, space.get(), kCGImageAlphaPremultipliedFirst));
    CGContextRef c = context.get();
    const CGFloat dashes[] = {3, 1, 2};
    CGContextSetLineDash(c, 1, dashes, 3);
    const Owned<CGColorRef> red(CGColorCreateGenericRGB(1, 0, 0, 1)),
        half(CGColorCreateCopyWithAlpha(red.get(), 0.5));
    const void* colors[] = {red.get(), half.get()};
    Owned<CFArrayRef> list;
    if (red && half) list = Owned<CFArrayRef>(CFArrayCreate(nullptr, colors, 2, &kCFTypeArrayCallBacks));
    // Passing a missing array to CGGradientCreateWithColors would be an error of the caller.
    if (!list) return Image();
    const Owned<CGGradientRef> gradient(CGGradientCreateWithColors(space.get(), list.get(), nullptr));

    const Owned<CGMutablePathRef> path(CGPathCreateMutable());
    CGPathMoveToPoint(path.get(), nullptr, 5, 5);
    CGPathAddQuadCurveToPoint(path.get(), nullptr, 30, 5, 30, 30);
    CGPathAddArc(path.get(), nullptr, 20, 20, 9, 0, 3, true);
    CGPathAddRoundedRect(path.get(), nullptr, CGRectMake(3, 20, 30, 15), 4, 4);
    CGPathAddPath(path.get(), nullptr, path.get());
    const Owned<CGMutablePathRef> spine(CGPathCreateMutable());
    CGPathAddEllipseInRect(spine.get(), nullptr, CGRectMake(8, 8, 20, 9));
    const CGAffineTransform turn = CGAffineTransformMakeRotation(0.1);
    const Owned<CGPathRef> outlines[] = {
        Owned<CGPathRef>(CGPathCreateCopyByDashingPath(spine.get(), nullptr, 1, dashes, 3)),
        Owned<CGPathRef>(
            CGPathCreateCopyByStrokingPath(spine.get(), nullptr, 2, kCGLineCapRound, kCGLineJoinRound, 4)),
        Owned<CGPathRef>(CGPathCreateCopyByTransformingPath(path.get(), &turn)),
        Owned<CGPathRef>(CGPathCreateMutableCopy(path.get())),
        Owned<CGPathRef>(CGPathCreateWithEllipseInRect(CGRectMake(1, 1, 30, 20), &turn))};
    for (const auto& outline : outlines) {
        CGContextSaveGState(c);
        CGContextSetFillColorWithColor(c, half.get());
        CGContextAddPath(c, outline.get());
        CGContextRotateCTM(c, 0.2);
        CGContextDrawPath(c, kCGPathEOFillStroke);
        CGContextRestoreGState(c);
    }
    CGContextSetBlendMode(c, kCGBlendModeMultiply);
    CGContextAddEllipseInRect(c, CGRectMake(2, 2, 36, 30));
    const CGRect box = CGContextGetPathBoundingBox(c);
    const Owned<CGPathRef> copy(CGContextCopyPath(c));
    CGContextEOClip(c);
    CGContextDrawLinearGradient(c, gradient.get(), box.origin, {30, 30}, 3);
    CGContextAddPath(c, copy.get());
    CGContextStrokePath(c);
    const Image image(CGBitmapContextCreateImage(c));
    const Image part(CGImageCreateWithImageInRect(image.get(), CGRectMake(5, 5, 20, 20)));
    if (!part) return Image(); // Likewise.
    CGContextDrawImage(c, CGRectMake(3, 3, 11, 7.5), part.get());
    CGContextRotateCTM(c, 0.3); // Turned and much reduced, an image is sampled in another way.
    CGContextDrawImage(c, CGRectMake(20, 3, 3, 4), image.get());
    CGContextDrawRadialGradient(c, gradient.get(), {20, 20}, 0, {22, 20}, 9, 1);
    return Image(CGBitmapContextCreateImage(c));
}

/// Creates a context with a saved state and another matrix, on a thread that has kept no memory for states.
Owned<CGContextRef> MakeSavedContext() {
    Owned<CGContextRef> context;
    std::thread([&] {
        const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
        context = Owned<CGContextRef>(
            CGBitmapContextCreate(nullptr, 48, 48, 8, 0, space.get(), kCGImageAlphaPremultipliedLast));
        CGContextSaveGState(context.get());
        CGContextTranslateCTM(context.get(), 3, 4);
    }).join();
    return context;
}

/// Draws a document with dashes and debug frames. Returns true, unlike the default result that a throw
/// leaves.
bool DrawInto(Document& document, CGContextRef context) {
    CoreGraphicsRenderer renderer;
    renderer.SetDocument(&document);
    renderer.SetDebugRendering(true);
    renderer.Render(CGRectMake(0, 0, 48, 48), 1, DashedState(), context);
    return true;
}

} // namespace

TEST_P(AllocationFailure, WhileParsingLeaksNothing) {
    const std::string& text = GetParam().text;
    const std::string expected = TextOf(*Parse(text));
    const auto isCompleteOrMissing = [&](const std::unique_ptr<Document>& document) {
        EXPECT_EQ(document ? TextOf(*document) : expected, expected);
    };
    FailEachAllocation([&] { return Parse(text); }, isCompleteOrMissing);
    if (GetParam().file.empty()) return;
    FailEachAllocation(
        [&] { return SVGParser().CreateDocumentWithContentsOfSVGFile(GetParam().file.c_str()); },
        isCompleteOrMissing);
}

TEST_P(AllocationFailure, WhileDrawingReturnsACompletePictureOrNone) {
    const auto document = Parse(GetParam().text);
    const std::vector<uint8_t> expected = PixelsOf(Draw(*document));
    ASSERT_FALSE(expected.empty());
    FailEachAllocation([&] { return Draw(*document); },
                       [&](const Image& image) {
                           EXPECT_TRUE(!image || PixelsOf(image) == expected);
                           EXPECT_TRUE(PixelsOf(Draw(*document)) == expected) << "when drawn again";
                       });
}

TEST_P(AllocationFailure, WhileDrawingKeepsTheCallersState) {
    const auto document = Parse(GetParam().text);
    DrawInto(*document, MakeSavedContext().get()); // Memory that it keeps for later contexts is not a leak.
    Owned<CGContextRef> context = MakeSavedContext();
    FailEachAllocation([&] { return DrawInto(*document, context.get()); },
                       [&](bool) {
                           EXPECT_EQ(CGContextGetCTM(context.get()).tx, 3);
                           CGContextRestoreGState(context.get());
                           EXPECT_EQ(CGContextGetCTM(context.get()).tx, 0);
                           context = Owned<CGContextRef>();
                           context = MakeSavedContext();
                       });
}

TEST(AllocationFailureOfObjects, LeavesACompletePictureOrNone) {
    const std::vector<uint8_t> expected = PixelsOf(DrawThroughEveryObject());
    ASSERT_FALSE(expected.empty());
    FailEachAllocation(DrawThroughEveryObject, [&](const Image& image) {
        EXPECT_TRUE(!image || PixelsOf(image) == expected);
        EXPECT_TRUE(PixelsOf(DrawThroughEveryObject()) == expected) << "when drawn again";
    });
}

// What could not be created is missing from the drawing that is then given NULL, and from no other.
TEST(AllocationFailureOfObjects, BelongsToTheContextThatLacksOne) {
    const struct {
        const char* name;
        void (*create)(CFTypeRef& object); // leaves NULL when memory is short
        void (*use)(CGContextRef c, CFTypeRef object);
    } cases[] = {
        {"path", [](CFTypeRef& o) { o = CGPathCreateMutable(); },
         [](CGContextRef c, CFTypeRef o) { CGContextAddPath(c, static_cast<CGPathRef>(o)); }},
        {"path in a path", [](CFTypeRef& o) { o = CGPathCreateMutable(); },
         [](CGContextRef c, CFTypeRef o) {
             const Owned<CGMutablePathRef> path(CGPathCreateMutable());
             CGPathAddPath(path.get(), nullptr, static_cast<CGPathRef>(o));
             CGContextAddPath(c, path.get());
             CGContextFillPath(c);
         }},
        {"colour", [](CFTypeRef& o) { o = CGColorCreateSRGB(1, 0, 0, 1); },
         [](CGContextRef c, CFTypeRef o) {
             CGContextSetFillColorWithColor(c, static_cast<CGColorRef>(const_cast<void*>(o)));
         }},
        {"gradient",
         [](CFTypeRef& o) {
             constexpr CGFloat kBlack[] = {0, 0, 0, 1};
             const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
             o = CGGradientCreateWithColorComponents(space.get(), kBlack, nullptr, 1);
         },
         [](CGContextRef c, CFTypeRef o) {
             CGContextDrawLinearGradient(c, static_cast<CGGradientRef>(const_cast<void*>(o)), {}, {9, 9}, 0);
         }},
    };
    for (const auto& each : cases)
        std::thread([&] {
            SCOPED_TRACE(each.name);
            const auto make = [] {
                const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
                return Owned<CGContextRef>(
                    CGBitmapContextCreate(nullptr, 8, 8, 8, 0, space.get(), kCGImageAlphaPremultipliedLast));
            };
            const auto hasImage = [](const Owned<CGContextRef>& c) {
                return static_cast<bool>(Image(CGBitmapContextCreateImage(c.get())));
            };
            const auto lacking = make(), complete = make();
            CFTypeRef object = nullptr;
            {
                const FailingAllocations failing(0, std::numeric_limits<size_t>::max());
                each.create(object);
            }
            ASSERT_EQ(object, nullptr);
            EXPECT_TRUE(hasImage(complete));
            each.use(lacking.get(), object);
            const auto later = make();
            EXPECT_FALSE(hasImage(lacking));
            EXPECT_TRUE(hasImage(complete));
            EXPECT_TRUE(hasImage(later));
            // An empty path is no failure.
            const CGPathRef none = CGContextCopyPath(later.get());
            EXPECT_EQ(none, nullptr);
            CGContextAddPath(later.get(), none);
            EXPECT_TRUE(hasImage(later));
        }).join();
}

INSTANTIATE_TEST_SUITE_P(Samples, AllocationFailure, testing::ValuesIn(Samples()),
                         [](const auto& test) { return test.param.name; });
