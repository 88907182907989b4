#include <Ozmira/SVG/ozmSVGParser.h>

#include "document_text.h"
#include "path_data/path_data_reader.h"

#include <gtest/gtest.h>

using namespace ozm;

namespace {

struct Case {
    const char* data;
    const char* path;
};

std::string PathText(const std::string& data) {
    Path path;
    SVGParser().ParsePathData(data, path);
    return test::Text(path);
}

/// Reads with a scanner, or number by number if it is null. The digits after the text must not affect the
/// result.
std::string ScannedPathText(std::string data, const PathDataScanner* scanner) {
    const size_t length = data.size();
    if (scanner) data.append(scanner->overrun, '7');
    Path path;
    ReadPathData({data.data(), length}, path.commands, scanner);
    return test::Text(path);
}

/// Reads path data in the document with the fewest possible characters after it, because in documents path
/// data may be read past its end.
std::string DocumentPathText(const std::string& data) {
    const std::string text = "<svg><path d=\"" + data + "\"/></>";
    const auto document = SVGParser().CreateDocumentWithSVGData(text.c_str());
    return document->elements.size() == 2 ? test::Text(document->elements[1].path) : "no document";
}

template <size_t N>
void Check(const Case (&cases)[N]) {
    for (const auto& [data, text] : cases) {
        EXPECT_EQ(PathText(data), text) << data;
        EXPECT_EQ(DocumentPathText(std::string(40, ' ') + data), text) << data;
    }
}

} // namespace

TEST(ParsePathData, ResolvesCommands) {
    Check({
        {"M 10 20 L 30 40 50 60 Z", "M10,20 L30,40;50,60 Z"},
        {"M0,0 10,10 20,20", "M0,0 L10,10 L20,20"},
        {"m 1 1 2 2", "M1,1 L3,3"},
        {"m 1 1 l 2 0 z l 0 3", "M1,1 L3,1 Z L3,4"},
        {"M1 1h1 1v1-1H9V8", "M1,1 L2,1;3,1 L3,2;3,1 L9,1 L9,8"},
        {"M1 2H V", "M1,2 L L"},
        {"M0 0 C 1 2 3 4 5 6 S 7 8 9 10", "M0,0 C1,2,3,4,5,6 C7,8,7,8,9,10"},
        {"m1 1c1 2 3 4 5 6 1 2 3 4 5 6", "M1,1 C2,3,4,5,6,7;7,9,9,11,11,13"},
        {"m1 1c1 2 3 4 5 6s1 1 2 2 3 3 4 4", "M1,1 C2,3,4,5,6,7 C8,9,7,8,8,9;9,10,11,12,12,13"},
        {"C1 2 3 4 5 6", "C1,2,3,4,5,6"},
        {"M10-20M.5.5", "M10,-20 M0.5,0.5"},
        {"M1e2 3M1E-1+.5e1", "M100,3 M0.1,5"},
        {"M1 2ZzZ 3 4", "M1,2 Z Z Z"},
        {"", ""},
        {" \t\n\v\f\r", ""},
    });
}

TEST(ParsePathData, ReflectsOnlyAfterACurve) {
    Check({
        {"S1 2 3 4", "C0,0,1,2,3,4"},
        {"M5 5S1 2 3 4", "M5,5 C5,5,1,2,3,4"},
        {"C0 0 1 1 3 3L4 4S5 5 6 6", "C0,0,1,1,3,3 L4,4 C4,4,5,5,6,6"},
        {"C0 0 1 1 3 3ZS5 5 6 6", "C0,0,1,1,3,3 Z C3,3,5,5,6,6"},
        {"C0 0 1 1 3 3H S5 5 6 6", "C0,0,1,1,3,3 L C3,3,5,5,6,6"},
        // Commands that draw nothing do not separate two curves.
        {"C0 0 1 1 3 3Q9 9 9 9L1S5 5 6 6", "C0,0,1,1,3,3 C5,5,5,5,6,6"},
    });
}

TEST(ParsePathData, DropsMalformedAndUnsupportedCommands) {
    Check({
        // Too few or too many arguments.
        {"M0 0L 1", "M0,0"},
        {"M1 2 3L4 4", "L4,4"},
        {"ML1 1", "L1,1"},
        {"M1 1C1 2 3 4 5S1 2 3Ll1 1", "M1,1 L2,2"},
        {"M1 1C1 2 3 4 5 6 7C", "M1,1"},
        // Arcs and quadratic curves.
        {"M0 0 A 5 5 0 0 1 10 0 l 1 0", "M0,0 L1,0"},
        {"m1 1q1 1 2 2t3 3T1 1Q1 1 1 1a1 1 0 0 1 2 2h1", "M1,1 L2,1"},
        // Errors that end the path.
        {"M 1 2 x L 3 4", "M1,2"},
        {"M 1 2 , L 3 4", "M1,2 L3,4"},
        {"M 1 2 ,, L 3 4", "M1,2"},
        {"M 1,,2", ""},
        {"M1e 3", ""},
        {"M1 2 3e", "M1,2"},
        {"M1 2 - L3 4", "M1,2"},
        {"1 2 L 3 4", ""},
        {",M1 2", ""},
        {"M,1 2L3 4", ""},
    });
}

TEST(ParsePathData, AppendsToThePath) {
    Path path;
    SVGParser().ParsePathData("M1 1C0 0 1 1 3 3", path);
    SVGParser().ParsePathData("s1 1 2 2", path); // Reflects about the new current point, (0, 0).
    EXPECT_EQ(test::Text(path), "M1,1 C0,0,1,1,3,3 C-1,-1,1,1,2,2");
}

TEST(ParsePathData, ReadsLongLists) {
    const size_t count = 1000;
    std::string data = "M1 1l";
    for (size_t i = 0; i < count; ++i) data += " 1.5-2";
    Path path;
    SVGParser().ParsePathData(data, path);
    ASSERT_EQ(path.commands.size(), 2u);
    const auto& points = path.commands[1].points;
    ASSERT_EQ(points.size(), count);
    for (size_t i = 0; i < count; ++i) {
        const double steps = static_cast<double>(i + 1);
        EXPECT_EQ(points[i], (TVec2<double>{1 + 1.5 * steps, 1 - 2 * steps}));
    }
    Path dropped;
    SVGParser().ParsePathData(data + " 7z", dropped);
    EXPECT_EQ(test::Text(dropped), "M1,1 Z");
}

TEST(ParsePathData, ReadsTheSameWithEveryScanner) {
    std::string fullBlocks = "l";
    for (int block = 0; block < 4; ++block)
        fullBlocks += "1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1              ";
    const std::string texts[] = {
        "M1 2 1.5-.25.75,3c1 2 3 4 5 6-1.25.5.5.5-3-4z",
        "m-0-0 H-0 v.0000001 1234567 12345.6 S99999.9 1234567. 123456.7-.123456",
        "M12345678 1.234567 l123456789-1234567.8 0.1234567 3.40282346638528859811704183484516925440e+38-7 9",
        "M1234567.8 123456.78,.12345678 12345678.l1.2345678-.123456789 1-12345678,12345.678",
        "m1e2-1E-3l+.5+.5 1.e1 2Zzz L\t1\n2\v3\f4\r5 6 h1,2 v3 , 4",
        "M000000000000000000000000000000000000000000000000000000000000000000000000012 34l0000000000 1",
        std::string(70, 'z'),
        fullBlocks + std::string(70, '.'),
        fullBlocks + ".1.2.3.4.5.6.7.8.9.1.2.3.4.5.6.7.8.9.1.2.3.4.5.6.7.8.9.1.2.3.4.5.6.7.8.9.1.2.3.4.5",
    };
    for (const std::string& text : texts) {
        for (size_t length = 0; length <= text.size(); ++length) {
            for (const char* const suffix : {"", "5", "-", ".", "e", ",", "+1", "x", "\xda", " h1"}) {
                // Blanks after the first letter shift the block boundaries. There are at least 64 of them, so
                // that the text is long enough for every scanner.
                std::string data = "H";
                data.append(64 + 13 * length % 64, ' ').append("1 ").append(text, 0, length).append(suffix);
                const std::string expected = ScannedPathText(data, nullptr);
                for (const PathDataScanner* const scanner : PathDataScanners()) {
                    ASSERT_EQ(ScannedPathText(data, scanner), expected) << scanner->name << ": " << data;
                }
                ASSERT_EQ(DocumentPathText(data), expected) << data;
            }
        }
    }
}

TEST(ParsePathData, KeepsNoMoreMemoryThanCommandsNeed) {
    Path path;
    SVGParser().ParsePathData("M1 2 ?" + std::string(400'000, 'z'), path);
    ASSERT_EQ(path.commands.size(), 1u);
    EXPECT_LE(path.commands.capacity(), 64u);
}

TEST(ParsePathData, ChoosesTheFirstSuitableScanner) {
    constexpr PathDataScanner fast{nullptr, nullptr, nullptr, 32, 6}, slow{nullptr, nullptr, nullptr, 8, 0};
    const PathDataScanner* const both[] = {&fast, &slow};
    EXPECT_EQ(ChoosePathDataScanner(both, 32, 6), &fast);
    EXPECT_EQ(ChoosePathDataScanner(both, 31, 6), &slow);
    EXPECT_EQ(ChoosePathDataScanner(both, 32, 5), &slow);
    EXPECT_EQ(ChoosePathDataScanner(both, 7, 6), nullptr);
    EXPECT_EQ(ChoosePathDataScanner({}, 32, 6), nullptr);
}

TEST(ParsePathCommandArguments, ReadsNumberLists) {
    const struct {
        const char* text;
        std::vector<double> numbers;
    } cases[] = {
        {" 1,2 3 ,, 4", {1, 2, 3, 4}},
        {"1;2", {1}},
        {"1-2.5.5", {1, -2.5, .5}},
        {"1,\t\r\n ,2,", {1, 2}},
        {"1\v2", {1, 2}}, // \v may precede a number, but not a comma.
        {"1\v,2", {1}},
        {",1", {}},
        {"1 2e 3", {1}},
        {"", {}},
        {" ", {}},
    };
    for (const auto& [text, numbers] : cases) {
        EXPECT_EQ(SVGParser().ParsePathCommandArguments(text), numbers) << text;
    }
}

TEST(PathCommandIsRelative, HoldsForLowerCaseCommands) {
    std::string relative;
    for (int c = 0; c < 256; ++c) {
        if (SVGParser().PathCommandIsRelative(static_cast<char>(c))) relative += static_cast<char>(c);
    }
    EXPECT_EQ(relative, "achlmqstvz");
}
