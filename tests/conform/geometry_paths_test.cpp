#include "geometry/path_reader.h"
#include "geometry/path_writer.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

using namespace ozm::conform;

namespace {

std::string Written(const Path& path, int decimals = 3) {
    std::string text;
    WritePath(path, decimals, text);
    return text;
}

/// Without what rounding leaves of 0.
double Shown(double value) { return std::abs(value) < 1e-12 ? 0 : value; }

/// The path as absolute commands, one letter each.
std::string Text(const Path& path) {
    std::string text;
    const auto add = [&](Point p) {
        char buffer[64];
        std::snprintf(buffer, sizeof buffer, "%.6g,%.6g ", Shown(p.x), Shown(p.y));
        text += buffer;
    };
    Segment segment;
    for (Segments segments(path); segments.Next(segment);) {
        text += "MLCZ"[static_cast<size_t>(segment.verb)];
        const int last = segment.verb == Verb::Cubic ? 3 : segment.verb == Verb::Line ? 1 : 0;
        for (int i = last == 0 ? 0 : 1; segment.verb != Verb::Close && i <= last; ++i) add(segment.points[i]);
    }
    return text;
}

} // namespace

TEST(ReadPath, ReadsWhatBrowsersRead) {
    const struct {
        const char* data;
        const char* path;
    } cases[] = {
        {"M1 2L3 4 5 6H7V8Z", "M1,2 L3,4 L5,6 L7,6 L7,8 Z"},
        {"m1 2l3 4 5 6h7v8z", "M1,2 L4,6 L9,12 L16,12 L16,20 Z"},
        {"m1 1 2 2M5,5 6,6", "M1,1 L3,3 M5,5 L6,6 "},
        {"M1-2.5.5-.5e1+3", "M1,-2.5 L0.5,-5 "}, // The last number lacks its partner.
        {"M0 0c1 2 3 4 5 6s1 1 2 2", "M0,0 C1,2 3,4 5,6 C7,8 6,7 7,8 "},
        {"M0 0s1 1 2 2", "M0,0 C0,0 1,1 2,2 "},
        {"M0 0q3 0 3 3t3 3", "M0,0 C2,0 3,1 3,3 C3,5 4,6 6,6 "},
        {"M0 0c1 2 3 4 5 6t6 6", "M0,0 C1,2 3,4 5,6 C5,6 7,8 11,12 "},
        {"M0 0q3 0 3 3s1 1 3 3", "M0,0 C2,0 3,1 3,3 C3,3 4,4 6,6 "},
        // A close puts the pen back, and what follows begins there.
        {"M1 1h2v2zl1 1", "M1,1 L3,1 L3,3 ZM1,1 L2,2 "},
        {"M1 1h2zm1 1h1zz", "M1,1 L3,1 ZM2,2 L3,2 Z"},
        {"M1 1zz", "M1,1 Z"},
        {"M1 1h2zs1 1 2 2", "M1,1 L3,1 ZM1,1 C1,1 2,2 3,3 "},
        // Arcs, their flags written in every way.
        {"M0 0A2 2 0 0 1 2 2", "M0,0 C1.10457,0 2,0.895431 2,2 "},
        {"M0 0A2 2 0 0 0 2 2", "M0,0 C0,1.10457 0.895431,2 2,2 "},
        {"M0 0a2-2 0 012 2", "M0,0 C1.10457,0 2,0.895431 2,2 "},
        {"M0 0a2 2 0 0,1,2 2", "M0,0 C1.10457,0 2,0.895431 2,2 "},
        {"M0 0a2 2 90 01 2 2", "M0,0 C1.10457,0 2,0.895431 2,2 "},
        {"M0 0a.5.5 0 014 0", "M0,0 C0,-1.10457 0.895431,-2 2,-2 C3.10457,-2 4,-1.10457 4,0 "},
        {"M0 0a2 2 0 112 2",
         "M0,0 C0,-1.10457 0.895431,-2 2,-2 C3.10457,-2 4,-1.10457 4,0 C4,1.10457 3.10457,2 2,2 "},
        {"M0 0a0 2 0 1 1 2 2", "M0,0 L2,2 "},
        {"M0 0a2 2 0 1 1 0 0h1", "M0,0 L1,0 "},
        {"M0 0a2 2 0 2 1 4 0h1", "M0,0 "},
        // Errors.
        {"", ""},
        {"none", ""},
        {"L1 1", ""},
        {"M,1 1", ""},
        {"M1,,1", ""},
        {"M1 1,L2 2", "M1,1 L2,2 "},
        {"M1 1L2 2,,3 3", "M1,1 L2,2 "},
        {"M1 1x2 2", "M1,1 "},
        {"M1 1L2 2 3M4 4", "M1,1 L2,2 "},
        {"M1 1z3 3", "M1,1 Z"},
        {"M1 1hv1", "M1,1 "},
        {"M1 1L2. 2", "M1,1 "},
        {"M1 1L2e 2", "M1,1 "},
        {"M1 1L1e39 2", "M1,1 "},
        {"M1 1L1e-400 2", "M1,1 L0,2 "},
        {"M1 1\vL2 2", "M1,1 "},
        {" \t\r\n\fM1e1 1E-1", "M10,0.1 "},
    };
    for (const auto& [data, path] : cases) EXPECT_EQ(Text(ReadPath(data).path), path) << data;
}

TEST(ReadPath, TellsWhereOzmiraDrawsOtherwise) {
    const PathData data = ReadPath("M1 1 2 2h3a1 1 0 010 0 1 1 0 015 5zm0 0zl1 1 9 9zl1 1t1 1q1 1 2 2 x");
    EXPECT_EQ(data.arcs.Seen(1), 10U);
    EXPECT_EQ(data.quadratics.Seen(1), 53U);
    EXPECT_NEAR(data.arcs.reach, std::hypot(5, 5), 0.3);
    EXPECT_FALSE(data.arcs.Seen(8) || data.quadratics.Seen(8));
    EXPECT_EQ(data.error, 66U);
    ASSERT_EQ(data.penOffsets.size(), 2U);
    EXPECT_EQ(data.penOffsets[0].offset, 35U);
    EXPECT_EQ(data.penOffsets[0].distance, std::hypot(9, 6));
    EXPECT_EQ(data.FirstPenOffset(1), 35U);
    EXPECT_EQ(data.FirstPenOffset(20), 49U);
    EXPECT_FALSE(data.FirstPenOffset(100));
    const PathData plain = ReadPath("M1 1h2v2zM2 2h2zM4 4a5 5 0 0 1 0 0");
    EXPECT_FALSE(plain.arcs.Seen(0) || plain.quadratics.Seen(0) || plain.error || !plain.penOffsets.empty());
}

TEST(ReadPath, DrawsArcsInAsFewCurvesAsTheToleranceAllows) {
    const struct {
        const char* data;
        double tolerance;
        size_t curves;
        double error; ///< Greatest distance from the circle around the origin.
    } cases[] = {
        {"M10 0A10 10 0 0 1 0 10", 0, 1, 0.0028},          {"M10 0A10 10 0 0 1 -5 8.660254", 0, 2, 0.0028},
        {"M10 0A10 10 0 0 1 -5 8.660254", 0.02, 1, 0.016}, {"M10 0A10 10 0 1 1 0 -10", 0.02, 3, 0.003},
        {"M10 0A10 10 0 1 1 9 -4.358899", 0.02, 3, 0.013}, {"M10 0A10 10 0 0 1 -10 0", 0.2, 1, 0.186},
    };
    for (const auto& [data, tolerance, curves, error] : cases) {
        const Path path = ReadPath(data, tolerance).path;
        EXPECT_EQ(path.Verbs().size(), 1 + curves) << data;
        double greatest = 0;
        Segment segment;
        for (Segments segments(path); segments.Next(segment);) {
            if (segment.verb != Verb::Cubic) continue;
            for (double t = 0; t <= 1; t += 0.01)
                greatest = std::max(greatest, std::abs(Length(CubicAt(segment.points, t)) - 10));
        }
        EXPECT_LE(greatest, error) << data;
    }
}

TEST(ReadPath, TellsWhatOzmiraDrawsOtherwise) {
    const struct {
        const char* data;
        bool isSame;
    } cases[] = {
        {"M1 1h2v2z", true},
        {"M1 1h2v2zM5 5h1z", true},
        {"M1 1h2v2zm5 5h1z", false},
        {"M1 1h2v2zzz", true},
        {"M1 1h2v2H1V1zm5 5h1z", true},
        {"M1 1h2v2V1H1zl5 5", true},
        {"M1 1h2v2zL5 5l1 1", true},
        {"M1 1h2v2zC5 5 6 6 7 7", true},
        {"M1 1h2v2zS6 6 7 7", false},
        {"M1 1h2zH9", true},
        {"M1 1h2v2zH9", false},
        {"M1 1a1 1 0 0 1 2 2", false},
        {"M1 1q1 1 2 2", false},
        {"M1 1h2a1 1 0 0 1 0 0v3z", true},
        {"M1 1C2 2 3 3 4 4a1 1 0 0 1 0 0S5 5 9 4", false},
        // Errors after which both stop, and such after which one of them goes on.
        {"M1 1h2 x", true},
        {"M1 1h2 x h2", true},
        {"L1 1", false},
        {"M1 1L2 2 3", false},
        {"M1 1L2", true},
        {"M1 1L2M3 3h1", false},
        {"M1 1z3", true},
        {"M1 1z3h1", false},
        {"M1 1L2. 2", false},
        {"M1 1L2 2,,3 3", true},
    };
    for (const auto& [data, isSame] : cases)
        EXPECT_EQ(DrawsTheSame(ReadPath(data), data, 1e-6), isSame) << data;
}

TEST(WritePath, TakesTheShortestCommands) {
    const struct {
        const char* data;
        int decimals;
        const char* written;
    } cases[] = {
        {"M 10 20 L 30 40 L 35 45", 3, "M10 20l20 20 5 5"},
        {"M10.5 .5L11 1.25", 3, "M10.5.5l.5.75"},
        {"M100 100L110 100L110 90L1 1", 3, "M100 100h10V90L1 1"},
        {"M0 0L1 1L2 2L4 3L5 9", 3, "M0 0l1 1 1 1 2 1 1 6"},
        {"M1 1C2 2 3 3 4 4C5 5 6 6 7 0", 3, "M1 1c1 1 2 2 3 3s2 2 3-4"},
        {"M1 1C1 1 3 3 4 0", 3, "M1 1s2 2 3-1"},
        {"M1 1C1 1 3 3 3 3", 3, "M1 1l2 2"},
        {"M0 1C0 1.9 1 2 1 2", 0, "M0 1c0 1 1 1 1 1"},
        {"M1 1H5V5L1 1Z", 3, "M1 1h4v4z"},
        {"M1 1H5V5H1Zl2 9h1z", 3, "M1 1h4v4H1zM1 1l2 9h1z"},
        {"m1 1h2v2zm5 5h1z", 3, "M1 1h2v2zM6 6h1z"},
        // Rounding does not add up, and what it makes equal is left out.
        {"M0 0h.3333h.3333h.3334v1", 1, "M0 0h.3.4.3v1"},
        {"M0 0h.0001v2h.0001z", 3, "M0 0v2z"},
        {"M0 0h.0001", 3, "M0 0h0"},
        {"M5 5", 3, ""},
        {"M5 5M6 6h1M7 7", 3, "M6 6h1"},
        {"M5 5z", 3, "M5 5z"},
        {"M5 5h0z", 3, "M5 5h0z"},
        {"M5 5h0h1", 3, "M5 5h1"},
        {"M-.0004 -.5L-1000000 1e9", 3, "M0-.5-1000000 1000000000"},
        {"M12345 6789L1 1", -2, "M123e2 68e2 0 0"},
        {"M1e30 1e30h1e30", 3, "M100000000000e19 100000000000e19h100000000000e19"},
        // What is left out does not count.
        {"M0 1e30zM0 2e30", 3, "M0 1000000000000e18z"},
        {"M0 0L.0000012 1", 7, "M0 0l.0000012 1"},
    };
    for (const auto& [data, decimals, written] : cases) {
        const std::string text = Written(ReadPath(data).path, decimals);
        EXPECT_EQ(text, written) << data;
        EXPECT_EQ(Written(ReadPath(text).path, decimals), text) << data;
    }
}

namespace {

/// Random path data of every command, sometimes broken.
std::string RandomData(std::mt19937& random) {
    const auto below = [&](unsigned n) { return static_cast<unsigned>(random() % n); };
    std::string data = "M";
    static constexpr std::string_view kLetters = "MmLlHhVvCcSsQqTtAaZz";
    static constexpr int kCounts[] = {2, 2, 2, 2, 1, 1, 1, 1, 6, 6, 4, 4, 4, 4, 2, 2, 7, 7, 0, 0};
    size_t letter = 0;
    for (unsigned i = 0, n = below(12); i < n; ++i) {
        for (int k = 0; k < kCounts[letter]; ++k) {
            data += ' ';
            if (letter / 2 == 8 && (k == 3 || k == 4)) {
                data += below(2) ? '1' : '0';
            } else {
                data += std::to_string(static_cast<int>(below(2001)) - 1000);
                data += '.';
                data += std::to_string(below(1000));
            }
        }
        if (below(40) == 0) data += " 7";
        if (below(40) == 0) data += ",,";
        letter = below(kLetters.size());
        data += kLetters[letter];
    }
    return data;
}

} // namespace

TEST(WritePath, WritesWhatOzmiraReadsAsMeant) {
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        const std::string data = RandomData(random);
        const int decimals = static_cast<int>(random() % 6);
        const PathData read = ReadPath(data);
        const std::string text = Written(read.path, decimals);
        const PathData again = ReadPath(text);
        ASSERT_FALSE(again.error) << data << '\n' << text;
        ASSERT_TRUE(DrawsTheSame(again, text, 0)) << data << '\n' << text;
        ASSERT_EQ(Written(again.path, decimals), text) << data;
        const Box a = BoxOf(read.path), b = BoxOf(again.path);
        const double error = 2 * RoundingError(decimals);
        if (b.IsEmpty()) continue;
        ASSERT_NEAR(a.left, b.left, error) << data;
        ASSERT_NEAR(a.bottom, b.bottom, error) << data;
    }
}

TEST(WritePath, LetsNoErrorsAddUp) {
    // As many relative commands as a reader will add up, far from the origin.
    Path path;
    path.MoveTo({1e9 / 3, -1e9 / 7});
    for (int i = 0; i < 5000; ++i)
        path.LineTo(path.Pen() + Point{i % 3 ? 0.3337 : 0, i % 2 ? 0.1113 : -0.0771});
    const std::string text = Written(path);
    const Path read = ReadPath(text).path;
    EXPECT_LE(Distance(read.Pen(), path.Pen()), 2 * RoundingError(3));
    EXPECT_EQ(Written(read), text);
    // Not all in one run.
    EXPECT_GE(std::count(text.begin(), text.end(), 'L'), 4);
}

TEST(ReadPath, KnowsOzmirasOwnReader) {
    // Against what that reader makes of the text, not only where there is an error.
    std::mt19937 random(11);
    int same = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string data = RandomData(random);
        for (char& c : data) {
            if (c == 'A' || c == 'Q' || c == 'T') c = 'L';
            if (c == 'a' || c == 'q' || c == 't') c = 'l';
        }
        const PathData read = ReadPath(data);
        PathData withError = read;
        withError.penOffsets.clear();
        withError.error = 0; // Makes it compare.
        const bool isSame = DrawsTheSame(withError, data, 1e-6);
        ASSERT_EQ(DrawsTheSame(read, data, 1e-6), isSame) << data;
        same += isSame;
    }
    EXPECT_GT(same, 4000);
}
