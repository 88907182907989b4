#include <Ozmira/ozmDocument.h>
#include <Ozmira/OzmiraVersion.h>
#include <Ozmira/ozmLog.h>
#include <Ozmira/ozmRenderingState.h>

#include "DocumentText.h"

#include <gtest/gtest.h>

using namespace ozm;

namespace {

const std::string kLongID = "an id that is too long to be stored in place";

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

/// A document-less style property with a payload that is not the default.
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

} // namespace

TEST(PathCommands, AreValues) {
    PathCommand move(PathCommand::Type::MoveTo);
    EXPECT_EQ(move.point, (TVec2<double>{0, 0}));
    move.point = {1, 2};
    PathCommand commands[] = {move, Lines({{1, 2}, {3, 4}, {5, 6}}), Curves(2),
                              PathCommand(PathCommand::Type::ClosePath),
                              PathCommand(PathCommand::Type::HorizontalLineTo)};
    for (const PathCommand& from : commands) {
        for (const PathCommand& to : commands) {
            PathCommand copy(to);
            copy = from;
            EXPECT_EQ(copy, from);
            PathCommand moved(to);
            moved = std::move(copy);
            EXPECT_EQ(moved, from);
            EXPECT_EQ(copy.type, from.type);
            EXPECT_TRUE(copy.type != PathCommand::Type::LineTo || copy.points.empty());
            EXPECT_TRUE(copy.type != PathCommand::Type::CurveTo || copy.curves.empty());
        }
    }
    for (PathCommand& command : commands) {
        const PathCommand before = command;
        PathCommand& self = command;
        command = self;
        EXPECT_EQ(command, before);
        command = std::move(self);
        EXPECT_EQ(command, before);
    }
    EXPECT_NE(commands[0], PathCommand(PathCommand::Type::MoveTo));
    EXPECT_NE(commands[1], Lines({{1, 2}}));
    EXPECT_NE(commands[2], Curves(1));
    EXPECT_NE(commands[0], commands[1]);
}

TEST(Paths, CopyDeeply) {
    Path path;
    path.commands = {PathCommand(PathCommand::Type::MoveTo), Lines({{1, 2}, {3, 4}, {5, 6}}), Curves(2)};
    const Path copy = path;
    EXPECT_EQ(copy, path);
    EXPECT_NE(copy.commands[1].points.data(), path.commands[1].points.data());
    path.commands[2].curves[0].end.x = 9;
    EXPECT_NE(copy, path);
}

TEST(StyleProperties, AreValues) {
    for (uint32_t i = 0; i <= static_cast<uint32_t>(StyleProperty::Type::Opacity); ++i) {
        const auto type = static_cast<StyleProperty::Type>(i);
        const StyleProperty property = Property(type);
        const std::string text = Text(property);
        for (uint32_t j = 0; j <= static_cast<uint32_t>(StyleProperty::Type::Opacity); ++j) {
            StyleProperty copy = Property(static_cast<StyleProperty::Type>(j));
            copy = property;
            EXPECT_EQ(Text(copy), text);
            StyleProperty moved(std::move(copy));
            EXPECT_EQ(Text(moved), text);
            StyleProperty target = Property(static_cast<StyleProperty::Type>(j));
            target = std::move(moved);
            EXPECT_EQ(Text(target), text);
            StyleProperty& self = target;
            target = self;
            target = std::move(self);
            EXPECT_EQ(Text(target), text);
        }
    }
    StyleProperty dashes = Property(StyleProperty::Type::StrokeDashArray);
    StyleProperty url = Property(StyleProperty::Type::FillURL);
    const StyleProperty movedDashes = std::move(dashes), movedURL = std::move(url);
    EXPECT_EQ(movedDashes.dashArray, (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(movedURL.url, kLongID);
    EXPECT_TRUE(dashes.dashArray.empty());
    EXPECT_TRUE(url.url.empty());
    EXPECT_EQ(StyleProperty(Property(StyleProperty::Type::FillRule)).keyword, 2u);
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
        element.transform.tx = 5;
        if (IsContainer(type)) element.children = {1, 2};
        if (type == Element::Type::Path) element.path.commands = {Curves(1)};
        if (type == Element::Type::Ellipse) element.radius = {1, 2};
        if (type == Element::Type::Rect) element.ry = 3;
        if (type == Element::Type::Use) element.href = kLongID;
        if (type == Element::Type::GradientElement) element.gradient.stops.assign(2, {.5, {1, 1, 1, 1}});
        const std::string changed = test::Text({}, element);
        const Element copy(element);
        EXPECT_EQ(test::Text({}, copy), changed);
        const Element moved(std::move(element));
        EXPECT_EQ(test::Text({}, moved), changed);
        EXPECT_TRUE(element.id.empty());
        EXPECT_TRUE(!IsContainer(type) || element.children.empty());
        EXPECT_TRUE(type != Element::Type::Path || element.path.commands.empty());
        EXPECT_TRUE(type != Element::Type::Use || element.href.empty());
        EXPECT_TRUE(type != Element::Type::GradientElement || element.gradient.stops.empty());
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

TEST(RenderingState, DefaultsToABlackFill) {
    const RenderingState& state = kRenderingStateDefault;
    EXPECT_EQ(state.strokeColor, (Color{0, 0, 0, 0}));
    EXPECT_EQ(state.fillColor, (Color{0, 0, 0, 1}));
    EXPECT_EQ(state.strokeOpacity, 1);
    EXPECT_EQ(state.strokeWidth, 1);
    EXPECT_EQ(state.miterLimit, 4);
    EXPECT_EQ(state.dashOffset, 0);
    EXPECT_EQ(state.fillOpacity, 1);
    EXPECT_EQ(state.opacity, 1);
    EXPECT_EQ(state.lineCap + state.lineJoin + state.fillRule + state.clipRule, 0u);
    EXPECT_TRUE(state.dashArray.empty() && state.fillReference.empty() && state.secondaryReference.empty());
}

TEST(Logs, ShowLevelAndMessage) {
    Log log;
    log.Append(Log::Level::Error, "a");
    log.Append(Log::Level::Warning, "b");
    log.Append(Log::Level::Info, "");
    log.Append(Log::Level::Debug, "d e");
    log.Append(static_cast<Log::Level>(5), "f");
    EXPECT_EQ(to_string(log), "[Error]     a\n[Warning]   b\n[Info]      \n[Debug]     d e\n[Unknown]   f\n");
}

TEST(Version, IsWrittenForWhat) {
    EXPECT_STREQ(reinterpret_cast<const char*>(OzmiraVersionString), "@(#)PROGRAM:Ozmira PROJECT:Ozmira-1\n");
    EXPECT_EQ(OzmiraVersionNumber, 1.0);
}
