// Sizes, images, the caller's rendering state, and ownership of objects.

#include "drawing.h"

#include <gmock/gmock.h>

#include <iomanip>
#include <limits>
#include <sstream>
#include <utility>

using namespace ozm;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::PrintToString;
using testing::StartsWith;

namespace {

const double kInfinity = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

struct SizeCase {
    CGSize viewPort, requested, expected;
    double scale = 1;
};

std::string text(CGSize size) {
    std::ostringstream out;
    out << std::setprecision(17) << size.width << " x " << size.height;
    return out.str();
}

/// Calls `check(renderer, row)` for each row, with a document of the row's viewport size.
void forEach(std::initializer_list<SizeCase> cases, auto check) {
    Drawing drawing("<svg width='1' height='1'/>");
    for (const SizeCase& row : cases) {
        SCOPED_TRACE(text(row.viewPort) + " into " + text(row.requested) + " at " + PrintToString(row.scale));
        drawing.document->size = {{{}, row.viewPort.width}, {{}, row.viewPort.height}};
        recording::takeCalls();
        check(*drawing.renderer, row);
    }
}

/// Creates an image and checks that the caller's NSError is not touched.
CGImageRef createImage(CoreGraphicsRenderer& renderer, CGSize size, double scale) {
    auto* const sentinel = reinterpret_cast<NSError*>(&renderer);
    NSError* error = sentinel;
    const CGImageRef image = renderer.createCGImageFitToSize(size, scale, kRenderingStateDefault, &error);
    EXPECT_EQ(error, sentinel);
    return image;
}

} // namespace

// clang-format off
TEST(FrameTest, FitsIntoASize) {
    forEach({{{50, 25}, {0, 0}, {50, 25}},      {{50, 25}, {-1, -2}, {50, 25}},   {{50, 25}, {kNaN, 0}, {50, 25}},
             {{50, 25}, {100, -3}, {100, 50}},  {{50, 25}, {-3, 100}, {200, 100}}, {{49, 49}, {1, 1}, {1 / 49.0 * 49, 1}},
             {{50, 25}, {100, 100}, {100, 50}}, {{25, 50}, {100, 100}, {50, 100}}, {{50, 25}, {50, 25}, {50, 25}},
             {{50, 25}, {kInfinity, 5}, {10, 5}}, {{50, 25}, {kNaN, 100}, {200, 100}},
             {{0, 10}, {20, 20}, {0, 20}},      {{10, 0}, {20, 20}, {20, 0}}},
            [](const CoreGraphicsRenderer& renderer, const SizeCase& row) {
                EXPECT_EQ(text(renderer.ViewPortSize()), text(row.viewPort));
                EXPECT_EQ(text(renderer.renderSizeFitToSize(row.requested)), text(row.expected));
            });
}

TEST(FrameTest, RoundsImagesUpToWholePixels) {
    forEach({{{10, 10}, {10.1, 0}, {10.5, 10.5}, 2}, {{10, 10}, {0, 0}, {10, 10}, 1},
             {{40, 30}, {10, 10}, {10, 8}, 1},       {{40, 30}, {10, 10}, {10, 7.5}, 4}},
            [](const CoreGraphicsRenderer& renderer, const SizeCase& row) {
                EXPECT_EQ(text(renderer.imageSizeFitToSize(row.requested, row.scale)), text(row.expected));
            });
}

TEST(FrameTest, CreatesNoImageOfAnImpossibleSize) {
    forEach({{{10, 10}, {10, 10}, {}, 0},    {{10, 10}, {10, 10}, {}, -1},        {{10, 10}, {10, 10}, {}, kNaN},
             {{10, 10}, {10, 10}, {}, 1e18}, {{10, 10}, {10, 10}, {}, kInfinity}, {{10, 10}, {1e300, 0}, {}},
             {{0, 10}, {10, 0}, {}},         {{-10, 10}, {0, 0}, {}},
             {{10, 10}, {0x1p62, 0}, {}}}, // the bytes of a row overflow 64 bits
            [](CoreGraphicsRenderer& renderer, const SizeCase& row) {
                EXPECT_EQ(createImage(renderer, row.requested, row.scale), nullptr);
                EXPECT_EQ(recording::takeCalls(), "");
            });
}
// clang-format on

TEST(FrameTest, DrawsImagesIntoABitmapWithYPointingDown) {
    Drawing drawing("<svg width='10' height='5'/>");
    recording::takeCalls();
    EXPECT_NE(createImage(*drawing.renderer, {5.2, 0}, 2), nullptr);
    const std::string calls = recording::takeCalls();
    EXPECT_THAT(calls, StartsWith(lines("BitmapContextCreate null 11 6 8 44 colorSpace1 2; TranslateCTM 0 6; "
                                        "ScaleCTM 1 -1; ScaleCTM 2 2; SaveGState; TranslateCTM 0 0; "
                                        "TranslateCTM 0 0.125; ScaleCTM 0.55 0.55; ClipToRect [0 0 10 5]")));
    EXPECT_THAT(calls, EndsWith(lines("RestoreGState; RestoreGState; BitmapContextCreateImage bitmap1; "
                                      "ContextRelease bitmap1")));
    EXPECT_THAT(recording::liveObjects(), ElementsAre("colorSpace1", "context1", "image1"));

    recording::state.createsBitmaps = false;
    EXPECT_EQ(createImage(*drawing.renderer, {0, 0}, 1), nullptr);
    EXPECT_EQ(recording::takeCalls(), "BitmapContextCreate null 10 5 8 40 colorSpace1 2\n");
}

TEST(FrameTest, UsesTheSizeForAnEmptyViewBox) {
    const std::pair<const char*, const char*> cases[] = {
        {"<svg width='30' height='40' viewBox='3 4 5 0'/>", "0 0 30 x 40"},
        {"<svg width='30' height='40' viewBox='-3 4 5 10'/>", "-3 4 5 x 10"},
        {"<svg viewBox='1 2 30 40'/>", "1 2 30 x 40"},
    };
    for (const auto& [svg, expected] : cases) {
        const CGRect box = Drawing(svg).renderer->ViewBox();
        EXPECT_EQ(PrintToString(box.origin.x) + " " + PrintToString(box.origin.y) + " " + text(box.size),
                  expected);
    }
}

TEST(FrameTest, DrawsIfOnlyOneSideIsZero) {
    Drawing drawing("<svg width='0' height='10' viewBox='0 0 5 5'/>");
    EXPECT_THAT(drawing.render(CGRectMake(0, 0, 10, 10), 1, kRenderingStateDefault),
                HasSubstr("ClipToRect [0 0 0 10]\n"));
}

TEST(FrameTest, DrawsNothingWithoutAContextOrElements) {
    Drawing drawing("<svg width='10' height='10'/>");
    drawing.document->elements.clear();
    EXPECT_THAT(drawing.render({}, 1, kRenderingStateDefault), EndsWith("SetAlpha 1\nRestoreGState\n"));
    drawing.context = nullptr;
    EXPECT_EQ(drawing.render({}, 1, kRenderingStateDefault), "");
}

TEST(FrameTest, SendsTheCallersWholeStateAndInheritsFromIt) {
    RenderingState state{{0.1, 0.2, 0.3, 0.5}, 0.5, 3,  2, 1,  7, {1, 2, 3}, 4,
                         {1, 0, 0, 0.5},       1,   "", 0, "", 1, 0.5};
    Drawing drawing("<g opacity='.5' fill-opacity='.5' clip-path='url(#c)'/><clipPath id='c'/>");
    EXPECT_THAT(
        drawing.render({}, 1, state),
        HasSubstr(lines("SetStrokeColor [0.1 0.2 0.3 0.25]; SetLineWidth 3; SetLineCap 2; SetLineJoin 1; "
                        "SetMiterLimit 7; SetLineDash 4 data [1 2 3]; SetFillColor [1 0 0 0.5]; "
                        "SetAlpha 0.5")));
    EXPECT_THAT(drawing.renderChildren(state),
                StartsWith(lines("SaveGState; EOClip; SetFillColor [1 0 0 0.25]; SetAlpha 0.25")));

    state.lineCap = state.lineJoin = 3;
    state.dashArray.clear();
    EXPECT_THAT(drawing.render({}, 1, state),
                HasSubstr(lines("SetLineCap 0; SetLineJoin 0; SetMiterLimit 7; SetLineDash 0 null []")));
}

TEST(FrameTest, ReleasesItsObjectsInTheDestructorButNotInSetDocument) {
    const char* svg = "<linearGradient id='g'/><clipPath id='c'><path d='M0 0L1 1'/></clipPath>"
                      "<circle r='1' fill='url(#g)' clip-path='url(#c)'/>";
    Drawing drawing(svg);
    drawing.renderChildren();
    drawing.renderer.reset();
    EXPECT_EQ(recording::takeCalls(),
              lines("ColorSpaceRelease colorSpace1; PathRelease path1; GradientRelease gradient1"));

    Drawing rebound(svg);
    rebound.renderChildren();
    rebound.renderer->SetDocument(rebound.document.get());
    EXPECT_EQ(recording::takeCalls(), "");
    rebound.renderChildren();
    rebound.renderer.reset();
    EXPECT_THAT(recording::liveObjects(), ElementsAre("context1", "gradient1", "path1"));
}
