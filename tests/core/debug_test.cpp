#include <Ozmira/ozmDebug.h>

#include <gtest/gtest.h>

using namespace ozm;

TEST(DebugText, NamesTypes) {
    const char* const commands[] = {"MoveTo",
                                    "ClosePath",
                                    "LineTo",
                                    "HorizontalLineTo",
                                    "VerticalLineTo",
                                    "CurveTo",
                                    "Unknown PathCommand::Type"};
    for (uint32_t i = 0; i < std::size(commands); ++i) {
        EXPECT_EQ(to_string(static_cast<PathCommand::Type>(i)), commands[i]);
    }
    const char* const elements[] = {"Group", nullptr, "Path",  "Ellipse", "Rect",
                                    "Use",   nullptr, nullptr, nullptr,   nullptr};
    for (uint32_t i = 0; i < std::size(elements); ++i) {
        EXPECT_EQ(to_string(static_cast<Element::Type>(i)),
                  elements[i] ? elements[i] : "Unknown Element::Type");
    }
}

TEST(DebugText, WritesPaths) {
    Path path;
    EXPECT_EQ(to_string(path), "<Path>:\n</path>");
    path.commands.emplace_back(PathCommand::Type::MoveTo).point = {1, 2};
    path.commands.emplace_back(PathCommand::Type::LineTo).points = {{3, 4}, {-.5, 1e7}};
    path.commands.emplace_back(PathCommand::Type::CurveTo).curves = {{{5, 6}, {1, 2}, {3, 4}}};
    path.commands.emplace_back(PathCommand::Type::CurveTo);
    path.commands.emplace_back(PathCommand::Type::VerticalLineTo);
    path.commands.emplace_back(PathCommand::Type::ClosePath);
    const std::string text = "<Path>:\n"
                             "\t<MoveTo: 1.000000, 2.000000>>\n"
                             "\t<LineTo: (3.000000, 4.000000) (-0.500000, 10000000.000000) >\n"
                             "\t<CurveTo: (1.000000, 2.000000) (3.000000, 4.000000) (5.000000, 6.000000), >\n"
                             "\t<CurveTo: >\n"
                             "\t<VerticalLineTo: >\n"
                             "\t<ClosePath: >>\n"
                             "</path>";
    EXPECT_EQ(to_string(path), text);
    Element element(Element::Type::Path);
    element.path = path;
    EXPECT_EQ(to_string(element), "<Element>\n" + text + "<\\Element>\n");
}

TEST(DebugText, WritesGroups) {
    EXPECT_EQ(to_string(Group{{1, 20000}}), "<Group>\n\t1\n\t20000\n<\\Group>\n");
    Element group(Element::Type::Group);
    group.children = {7};
    EXPECT_EQ(to_string(group), "<Element>\n<Group>\n\t7\n<\\Group>\n<\\Element>\n");
    EXPECT_EQ(to_string(Element(Element::Type::Rect)), "<Element>\n<\\Element>\n");
    EXPECT_EQ(to_string(Element(Element::Type::Defs)), "<Element>\n<\\Element>\n");
}
