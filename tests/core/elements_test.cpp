#include <Ozmira/SVG/ozmSVGParser.h>

#include "document_text.h"

#include <gtest/gtest.h>

using namespace ozm;

namespace {

struct Case {
    const char* markup;
    const char* text; ///< One line per element.
};

template <size_t N>
void Check(const Case (&cases)[N]) {
    for (const auto& [markup, text] : cases) {
        const std::string lines = *text ? std::string(text) + "\n" : "";
        EXPECT_EQ(test::ElementsText(markup), lines) << markup;
    }
}

} // namespace

TEST(Elements, Rects) {
    Check({
        {"<rect x='1' y='2px' width='1e1' height='4' rx='3'/>", "Rect 1,2,10,4,3,2"},
        {"<rect width='4' height='100' rx='10'/>", "Rect 0,0,4,100,2,10"},
        {"<rect width='100' height='4' ry='10'/>", "Rect 0,0,100,4,10,2"},
        {"<rect width='10' height='10' rx='1' ry='20'/>", "Rect 0,0,10,10,1,5"},
        {"<rect width='10' height='10' rx='5' ry='-1'/>", "Rect 0,0,10,10,5,-1"},
        {"<rect width='10' height='10' ry='x' rx='2'/>", "Rect 0,0,10,10,2,0"},
        {"<rect width='-10' height='10' rx='1'/>", "Rect 0,0,-10,10,-5,1"},
        {"<rect width='0' height='4'/>", "Rect 0,0,0,4,0,0 hidden"},
        {"<rect width='4' height='x'/>", "Rect 0,0,4,0,0,0 hidden"},
        {"<rect height='4'/>", "Rect 0,0,0,4,0,0"},
        {"<rect rx='3'/>", "Rect 0,0,0,0,0,0"},
        {"<rect width='0' visibility='x'/>", "Rect 0,0,0,0,0,0"},
        {"<rect width='1' width='2' Height='3'/>", "Rect 0,0,1,0,0,0"},
    });
}

TEST(Elements, CirclesAndEllipses) {
    Check({
        {"<circle cx='1' cy='2' r='3'/>", "Ellipse 1,2 3,3"},
        {"<circle r='0' rx='4'/>", "Ellipse 0,0 0,0"},
        {"<ellipse cx='1' cy='2' rx='3' ry='4'/>", "Ellipse 1,2 3,4"},
        {"<ellipse rx='0' ry='4' r='5'/>", "Ellipse 0,0 0,4 hidden"},
        {"<ellipse rx='-1' ry='none'/>", "Ellipse 0,0 -1,0 hidden"},
        {"<ellipse/>", "Ellipse 0,0 0,0"},
    });
}

TEST(Elements, Lines) {
    Check({
        {"<line x1='1' y1='2' x2='3' y2='4' id='a' opacity='1' transform='scale(2)'/>",
         "Path M1,2 L3,4 id=a transform=2,0,0,2,0,0 {Opacity=1}"},
        {"<line/>", "Path M0,0 L0,0"},
        {"<polyline points='1,2 3,4' id='a' fill='none'/>", "Path M1,2 L1,2 L3,4 id=a {FillColor=0,0,0,0}"},
        {"<polyline points='1 2'/>", "Path M1,2 L1,2"},
        {"<polyline points='10 20 30'/>", ""},
        {"<polyline points='1'/>", ""},
        {"<polyline points=''/>", ""},
        {"<polyline/>", ""},
        {"<polygon points='1,2 3,4' transform='scale(2)'/>", "Path M1,2 L1,2 L3,4 Z transform=2,0,0,2,0,0"},
        {"<polygon points='10 20 30'/>", "Path M10,20 L10,20 Z"},
        {"<polygon points='1'/>", "Path Z"},
        {"<polygon points='' id='a'/>", "Path Z id=a"},
        {"<polygon id='a'/>", ""},
    });
}

TEST(Elements, Paths) {
    Check({
        {"<path d='M1 2' id='a' opacity='1' transform='translate(1 2) junk'/>",
         "Path M1,2 id=a transform=1,0,0,1,1,2 {Opacity=1}"},
        {"<path d=''/>", "Path "},
        {"<path D='M1 2'/>", ""},
        {"<path/>", ""},
        {"<path d='M1 2' d='M3 4'/>", "Path M1,2"},
    });
}

TEST(Elements, Containers) {
    Check({
        {"<g id='a' transform='scale(2)' opacity='1'><circle/><g/><line/></g>",
         "Group 2 3 4 id=a transform=2,0,0,2,0,0 {Opacity=1}\nEllipse 0,0 0,0\nGroup\nPath M0,0 L0,0"},
        {"<a id='a'><circle/></a>", "Group 2 id=a\nEllipse 0,0 0,0"},
        {"<defs id='a' display='none'><circle/></defs>", "Defs 2 id=a hidden\nEllipse 0,0 0,0"},
        {"<clipPath id='a' clipPathUnits='x' transform='scale(2)'><circle/></clipPath>",
         "ClipPath 2 id=a transform=2,0,0,2,0,0\nEllipse 0,0 0,0"},
        {"<g><text/><path/><title>x</title></g>", "Group"},
        {"<symbol><circle/></symbol><svg><circle/></svg><text><circle/></text><stop/><metadata/><G/"
         "><clippath/><gg/>",
         ""},
        {"<ellips/><Path d=''/><polylines points='1 2'/><linearGradients/>", ""},
        {"<g>text<!-- <circle/> --><?circle?><![CDATA[<circle/>]]></g>", "Group"},
    });
}

TEST(Elements, Uses) {
    Check({
        {"<use xlink:href='#a' x='1px' y='-2' id='b' opacity='1' transform='scale(2)' width='5'/>",
         "Use 1,-2 #a id=b transform=2,0,0,2,0,0 {Opacity=1}"},
        {"<use xlink:href='a'/>", "Use 0,0 #"},
        {"<use xlink:href=''/>", "Use 0,0 #"},
        {"<use xlink:href='#'/>", "Use 0,0 #"},
        {"<use xlink:href=' #a'/>", "Use 0,0 #"},
        {"<use href='#a'/>", "Use 0,0 #"},
        {"<use xlink:href='##a b'/>", "Use 0,0 ##a b"},
        {"<use xlink:href='x' xlink:href='#a'/>", "Use 0,0 #"},
    });
}

TEST(Elements, Gradients) {
    Check({
        {"<linearGradient/>", "Linear 0px,0px,0px,0px box Pad"},
        {"<linearGradient id='a' x1='1' y1='50%' x2='3em' y2='x' fill='red' style='fill:red' "
         "transform='scale(2)'/>",
         "Linear 1px,50%,3em,0px box Pad id=a"},
        {"<linearGradient gradientUnits='userSpaceOnUse' gradientTransform='scale(2) x' "
         "spreadMethod='Reflect'/>",
         "Linear 0px,0px,0px,0px user Reflect gradientTransform=2,0,0,2,0,0"},
        {"<linearGradient gradientUnits='userspaceonuse' spreadMethod='reflect'/>",
         "Linear 0px,0px,0px,0px box Pad"},
        {"<linearGradient gradientUnits='objectBoundingBox' spreadMethod='Repeat'/>",
         "Linear 0px,0px,0px,0px box Repeat"},
        {"<linearGradient spreadMethod='Pad' xlink:href='#a'/>", "Linear 0px,0px,0px,0px box Pad"},
        {"<radialGradient/>", "Radial 0px,0px,0px,0px,0px box Pad"},
        {"<radialGradient cx='30%' cy='2' r='3' x1='9'/>", "Radial 30%,2px,3px,30%,2px box Pad"},
        {"<radialGradient fx='1' fy='+' cx='30%' cy='40%' id='a'/>",
         "Radial 30%,40%,0px,1px,40% box Pad id=a"},
        {"<g><linearGradient/></g>", "Group 2\nLinear 0px,0px,0px,0px box Pad"},
        {"<linearGradient><circle/><Stop/>x<stop offset='.8'/><g><stop/></g><stop "
         "offset='.2'/></linearGradient>",
         "Linear 0px,0px,0px,0px box Pad @0.8:0,0,0,1 @0.2:0,0,0,1"},
    });
}

TEST(Elements, GradientStops) {
    const struct {
        const char* attributes;
        const char* stop;
    } cases[] = {
        {"", "@0:0,0,0,1"},
        {"offset='50%' stop-color='red'", "@0.5:1,0,0,1"},
        {"offset='1e-1' stop-color='none'", "@0.1:0,0,0,1"},
        {"offset=' +.5 %'", "@0.5:0,0,0,1"},
        {"offset='150%' stop-opacity='50%'", "@1.5:0,0,0,0.5"},
        {"offset='-0.2x' stop-opacity='-3'", "@-0.2:0,0,0,-3"},
        {"offset='x' stop-opacity='abc' stop-color='x'", "@0:0,0,0,1"},
        {"stop-color='red' style='stop-color:blue'", "@0:0,0,1,1"},
        {"stop-color='red' style='stop-color:none;stop-opacity:.5;offset:1'", "@0:0,0,0,0.5"},
        {"stop-color='red' stop-opacity='.2' style='stop-color:x; stop-opacity : abc;opacity:.5'",
         "@0:1,0,0,0.2"},
        {"style='stop-color:;stop-opacity:.5'", "@0:0,0,0,1"},
        {"style='stop-color:red;stop-color:lime;stop-opacity:10%'", "@0:0,1,0,0.1"},
    };
    for (const auto& [attributes, stop] : cases) {
        EXPECT_EQ(
            test::ElementsText(std::string("<radialGradient><stop ") + attributes + "/></radialGradient>"),
            std::string("Radial 0px,0px,0px,0px,0px box Pad ") + stop + "\n")
            << attributes;
    }
}
