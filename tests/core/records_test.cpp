#include <Ozmira/ozmElement.h>
#include <Ozmira/OzmiraVersion.h>
#include <Ozmira/ozmLog.h>

#include "document_text.h"

#include <gtest/gtest.h>

using namespace ozm;

namespace {

const std::string kLongID = "an id that is too long to be stored inside a std::string";

PathCommand Lines(std::vector<TVec2<double>> points) {
    PathCommand command(PathCommand::Type::LineTo);
    command.points = std::move(points);
    return command;
}

PathCommand Curves(size_t count) {
    PathCommand command(PathCommand::Type::CurveTo);
    command.curves.assign(count, {{1, 2}, {3, 4}, {5, 6}});
    return command;
}

/// A style property of any type, with a payload other than the default.
StyleProperty Property(StyleProperty::Type type) {
    using Type = StyleProperty::Type;
    StyleProperty property(type);
    switch (type) {
    case Type::StrokeColor:
    case Type::FillColor: property.color = {.1, .2, .3, .4}; break;
    case Type::StrokeLineCap:
    case Type::StrokeLineJoin:
    case Type::FillRule:
    case Type::ClipRule: property.keyword = 2; break;
    case Type::StrokeDashArray: property.dashArray = {1, 2, 3}; break;
    case Type::FillURL:
    case Type::ClipPathURL: property.url = kLongID; break;
    default: property.number = 7; break;
    }
    return property;
}

std::string Text(const StyleProperty& property) {
    Style style;
    style.properties.push_back(property);
    return test::Text(style);
}

/// Copies and moves `from` onto copies of `to` in every way, self-assignment included, and returns the
/// result.
template <typename T>
T PassedOn(const T& from, const T& to) {
    T copy(to);
    copy = from;
    T moved(to);
    moved = std::move(copy);
    T& self = moved;
    moved = self;
    moved = std::move(self);
    return T(std::move(moved));
}

} // namespace

TEST(PathCommands, AreValues) {
    PathCommand move(PathCommand::Type::MoveTo);
    EXPECT_EQ(move.point, (TVec2<double>{0, 0}));
    move.point = {1, 2};
    const PathCommand commands[] = {move,
                                    Lines({{1, 2}, {3, 4}, {5, 6}}),
                                    Curves(2),
                                    Lines({}),
                                    PathCommand(PathCommand::Type::ClosePath),
                                    PathCommand(PathCommand::Type::HorizontalLineTo)};
    for (const PathCommand& from : commands) {
        for (const PathCommand& to : commands) {
            EXPECT_EQ(PassedOn(from, to), from);
            EXPECT_EQ(from == to, &from == &to);
        }
    }
    PathCommand lines = commands[1], curves = commands[2];
    const PathCommand movedLines(std::move(lines));
    move = std::move(curves);
    EXPECT_TRUE(lines.type == PathCommand::Type::LineTo && lines.points.empty());
    EXPECT_TRUE(curves.type == PathCommand::Type::CurveTo && curves.curves.empty());
}

TEST(PathCommands, OfUnknownTypesCanBeCopiedAndDestroyed) {
    for (const uint32_t type : {6u, 34u, 37u}) { // Modulo 32, the last two are the types that hold lists.
        PathCommand command{static_cast<PathCommand::Type>(type)};
        command.point = {1, 2}; // Would be freed as a list if the type were mistaken for one.
        EXPECT_EQ(PathCommand(command).point, command.point) << type;
    }
}

#if defined(__cpp_lib_constexpr_vector)
constexpr size_t SizeOfListInConstantExpression() {
    std::vector<TVec2<double>> points{{1, 2}};
    points.push_back({3, 4});
    return points.size();
}
static_assert(SizeOfListInConstantExpression() == 2);
#endif

TEST(Paths, CopyDeeply) {
    Path path;
    path.commands = {PathCommand(PathCommand::Type::MoveTo), Lines({{1, 2}, {3, 4}, {5, 6}}), Curves(2)};
    const Path copy = path;
    EXPECT_EQ(copy, path);
    path.commands[2].curves[0].end.x = 9;
    EXPECT_NE(copy, path);
}

TEST(StyleProperties, AreValues) {
    std::vector<StyleProperty> properties;
    for (uint32_t i = 0; i <= 14; ++i) properties.push_back(Property(static_cast<StyleProperty::Type>(i)));
    for (const StyleProperty& from : properties) {
        for (const StyleProperty& to : properties) EXPECT_EQ(Text(PassedOn(from, to)), Text(from));
    }
    StyleProperty dashes = Property(StyleProperty::Type::StrokeDashArray);
    StyleProperty url = Property(StyleProperty::Type::FillURL);
    const StyleProperty movedDashes = std::move(dashes), movedURL = std::move(url);
    EXPECT_EQ(movedDashes.dashArray, (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(movedURL.url, kLongID);
    EXPECT_TRUE(dashes.dashArray.empty());
    EXPECT_TRUE(url.url.empty());
}

TEST(Elements, StartWithDefaultsAndAreValues) {
    const struct {
        Element::Type type;
        const char* text;
    } cases[] = {
        {Element::Type::Group, "Group"},
        {Element::Type::Path, "Path "},
        {Element::Type::Ellipse, "Ellipse 0,0 0,0"},
        {Element::Type::Rect, "Rect 0,0,0,0,0,0"},
        {Element::Type::Use, "Use 0,0 #"},
        {Element::Type::ClipPath, "ClipPath"},
        {Element::Type::Defs, "Defs"},
        {Element::Type::GradientElement, "Linear 0px,0px,0px,0px box Pad"},
    };
    for (const auto& [type, text] : cases) {
        Element element(type);
        EXPECT_EQ(element.styleIndex, -1);
        EXPECT_EQ(test::Text({}, element), text);
        element.id = kLongID;
        element.hidden = true;
        if (IsContainer(type)) element.children = {1, 2};
        if (type == Element::Type::Path) element.path.commands = {Curves(1)};
        if (type == Element::Type::Ellipse) element.radius = {1, 2};
        if (type == Element::Type::Rect) element.ry = 3;
        if (type == Element::Type::Use) element.href = kLongID;
        if (type == Element::Type::GradientElement) element.gradient.stops.assign(2, {.5, {1, 1, 1, 1}});
        const std::string changed = test::Text({}, element);
        EXPECT_EQ(test::Text({}, Element(element)), changed);
        EXPECT_EQ(test::Text({}, Element(std::move(element))), changed);
        // A move takes what is on the heap; plain numbers are copied.
        element.hidden = false;
        const bool ownsPayload = type != Element::Type::Ellipse && type != Element::Type::Rect;
        EXPECT_EQ(test::Text({}, element) == text, ownsPayload);
    }
}

TEST(Elements, OfUnknownKindsHaveNoPayload) {
    for (const uint32_t type : {1u, 9u, 0xFFFFFFFFu}) {
        Element element{static_cast<Element::Type>(type)};
        element.id = kLongID;
        const Element copy(element);
        const Element moved(std::move(element));
        EXPECT_EQ(copy.id, kLongID);
        EXPECT_EQ(moved.id, kLongID);
        EXPECT_EQ(static_cast<uint32_t>(moved.type), type);
    }
}

TEST(Logs, PrintLevelAndMessage) {
    Log log;
    log.Append(Log::Level::Error, "a");
    log.Append(Log::Level::Warning, "b");
    log.Append(Log::Level::Info, "");
    log.Append(Log::Level::Debug, "d e");
    log.Append(static_cast<Log::Level>(5), "f");
    EXPECT_EQ(to_string(log), "[Error]     a\n[Warning]   b\n[Info]      \n[Debug]     d e\n[Unknown]   f\n");
}

TEST(Version, FollowsTheProject) {
    const std::string major = std::to_string(std::stoi(OZMIRA_VERSION));
    EXPECT_EQ(reinterpret_cast<const char*>(OzmiraVersionString),
              "@(#)PROGRAM:Ozmira PROJECT:Ozmira-" + major + "\n");
    EXPECT_EQ(OzmiraVersionNumber, std::stod(OZMIRA_VERSION)); // reads up to the second point
}
