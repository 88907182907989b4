#include "picture.h"
#include "tool_test.h"

#include <cmath>

using namespace ozm::test;

namespace {

class PictureTest : public ToolTest {
protected:
    /// Draws a file and decodes the picture.
    Picture Render(const std::string& drawing, const std::string& arguments = "") const {
        Write("drawing.svg", drawing);
        const Outcome outcome = Run("ozmira render drawing.svg -o picture.png " + arguments);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
        return DecodePNG(Read("picture.png"));
    }
};

constexpr uint32_t kBlack = 0x000000FF, kRed = 0xFF0000FF, kGreen = 0x00FF00FF, kBlue = 0x0000FFFF;

/// A row of squares, one point wide, each of a different colour.
std::string Squares(int count) {
    std::string drawing = "<svg viewBox='0 0 " + std::to_string(count) + " 1'>";
    for (int i = 0; i < count; ++i) {
        drawing += "<rect x='" + std::to_string(i) + "' width='1' height='1' fill='rgb(" +
                   std::to_string(i % 256) + "," + std::to_string(i / 256) + ",9)'/>";
    }
    return drawing + "</svg>";
}

} // namespace

TEST_F(PictureTest, FitsTheRequestedSize) {
    const struct {
        const char* arguments;
        const char* size;
        uint32_t pixelsPerMetre;
    } kCases[] = {
        {"", "4 x 2", 2835}, // 72 dots per inch
        {"--width 8", "8 x 4", 2835},
        {"--height 8", "16 x 8", 2835},
        {"--width 8 --height 8", "8 x 4", 2835},
        {"--width 8 --scale 2", "16 x 8", 5669},
        {"--scale 3", "12 x 6", 8504},
        {"--scale 0.5", "2 x 1", 1417},
        {"--width 3.1", "4 x 2", 2835}, // rounded up to whole pixels
    };
    for (const auto& [arguments, size, pixelsPerMetre] : kCases) {
        SCOPED_TRACE(arguments);
        const Picture picture = Render(kTwoHalves, arguments);
        EXPECT_EQ(picture.Size(), size);
        EXPECT_EQ(picture.pixelsPerMetre, pixelsPerMetre);
    }
}

TEST_F(PictureTest, HasTheRequestedColours) {
    const struct {
        const char* arguments;
        uint32_t left, right;
    } kCases[] = {
        {"", kBlack, kRed},
        {"--fill lime", kGreen, kRed},
        {"--fill '#00f'", kBlue, kRed},
        {"--fill ' rgb(0%,100%,0%) '", kGreen, kRed},
        {"--fill none", 0, kRed},
        {"--fill '#00ff0080'", 0x00FF0080, kRed},
        {"--fill '#0f08'", 0x00FF0088, kRed},
    };
    for (const auto& [arguments, left, right] : kCases) {
        SCOPED_TRACE(arguments);
        const Picture picture = Render(kTwoHalves, arguments);
        EXPECT_EQ(picture.At(0, 1), left);
        EXPECT_EQ(picture.At(3, 0), right);
    }
    const Picture framed = Render(kTwoHalves, "--width 40 --debug-frames");
    EXPECT_EQ(framed.At(0, 7), kBlue);
    EXPECT_EQ(framed.At(20, 0), kBlue);
    EXPECT_EQ(framed.At(30, 10), kRed);
}

TEST_F(PictureTest, UsesTheFewestBits) {
    const struct {
        int colors;
        const char* format;
    } kCases[] = {{1, "1-bit palette"},  {2, "1-bit palette"},   {3, "2-bit palette"},
                  {4, "2-bit palette"},  {5, "4-bit palette"},   {16, "4-bit palette"},
                  {17, "8-bit palette"}, {255, "8-bit palette"}, {256, "8-bit palette"},
                  {257, "8-bit RGBA"},   {1000, "8-bit RGBA"}};
    for (const auto& [colors, format] : kCases) {
        SCOPED_TRACE(colors);
        const Picture picture = Render(Squares(colors));
        EXPECT_EQ(picture.format, format);
        for (uint32_t i = 0; i < picture.width; ++i) {
            ASSERT_EQ(picture.At(i, 0), i % 256 << 24 | i / 256 << 16 | 0x9FF) << i;
        }
    }
}

TEST_F(PictureTest, UsesGrayAndAlphaForSmallGrayPictures) {
    std::string grays = "<svg viewBox='0 0 32 8'>";
    for (int x = 0; x < 32; ++x) {
        const std::string place = "<rect height='8' width='1' x='" + std::to_string(x) + "' ";
        grays += place + "fill='rgb(" + std::to_string(8 * x) + "," + std::to_string(8 * x) + "," +
                 std::to_string(8 * x) + ")'/>";
    }
    const struct {
        std::string end, arguments;
        const char* format;
    } kCases[] = {{"", "", "8-bit gray and alpha"},
                  {"", "--width 400", "8-bit gray and alpha"}, // 40,000 pixels
                  {"", "--width 404", "8-bit palette"},
                  {"", "--width 640", "8-bit palette"},
                  {"<path fill='#010200' d='M0 4h1v4H0z'/>", "", "8-bit palette"}};
    for (const auto& [end, arguments, format] : kCases) {
        SCOPED_TRACE(end + arguments);
        const Picture picture = Render(grays + end + "</svg>", arguments);
        EXPECT_EQ(picture.format, format);
        for (uint32_t x = 0; picture.width % 32 == 0 && x < 32; ++x) {
            ASSERT_EQ(picture.At(x * picture.width / 32, 0), x * 8 * 0x1010100u | 0xFF) << x;
        }
    }
}

TEST_F(PictureTest, UndoesPremultiplication) {
    // 64 different pixels make a palette, 400 make RGBA. The bitmap holds colours multiplied by alpha and
    // rounded to whole numbers, which limits how exactly they can be restored.
    for (const int steps : {8, 20}) {
        SCOPED_TRACE(steps);
        std::string drawing =
            "<svg viewBox='0 0 " + std::to_string(steps) + " " + std::to_string(steps) + "'>";
        for (int y = 0; y < steps; ++y) {
            for (int x = 0; x < steps; ++x) {
                drawing += "<rect x='" + std::to_string(x) + "' y='" + std::to_string(y) +
                           "' width='1' height='1' fill='rgb(" + std::to_string(x * 255 / (steps - 1)) +
                           ",200,0)' opacity='" + std::to_string(double(y + 1) / steps) + "'/>";
            }
        }
        const Picture picture = Render(drawing + "</svg>");
        EXPECT_EQ(picture.format, steps == 8 ? "8-bit palette" : "8-bit RGBA");
        for (int y = 0; y < steps; ++y) {
            const double alpha = std::round(255.0 * (y + 1) / steps);
            for (int x = 0; x < steps; ++x) {
                const uint32_t pixel = picture.At(static_cast<uint32_t>(x), static_cast<uint32_t>(y));
                EXPECT_NEAR(pixel & 255, alpha, 1);
                EXPECT_NEAR(pixel >> 24, x * 255 / (steps - 1), 1 + 255 / alpha);
                EXPECT_NEAR(pixel >> 16 & 255, 200, 1 + 255 / alpha);
            }
        }
    }
}
