// The drawings of drawings.txt, and cases that need more than a drawing and its calls: large documents,
// documents that the parser does not produce, and repeated rendering.

#include "drawing.h"

#include <gmock/gmock.h>

#include <fstream>

using namespace ozm;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

#if defined(__SANITIZE_ADDRESS__)
#define OZMIRA_IS_SANITIZED 1
#elif defined(__has_feature)
#define OZMIRA_IS_SANITIZED __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#endif

TEST(DrawingsTest, MakeTheirCalls) {
    std::ifstream file(OZMIRA_DRAWINGS_FILE);
    std::string line;
    while (std::getline(file, line) && !line.empty()) continue;
    int count = 0;
    while (std::getline(file, line)) {
        SCOPED_TRACE(line);
        std::string svg, calls;
        while (std::getline(file, line) && !line.empty())
            (line.starts_with('<') ? svg : calls) += lines(line);
        Drawing drawing(svg);
        const bool isWhole = svg.starts_with("<svg");
        drawing.renderer->SetDebugRendering(isWhole);
        EXPECT_EQ(isWhole ? drawing.render(CGRectMake(5, 6, 400, 100), 2, kRenderingStateDefault)
                          : drawing.renderChildren(),
                  calls);
        ++count;
    }
    EXPECT_GT(count, 40) << OZMIRA_DRAWINGS_FILE;
}

TEST(DrawingsTest, UnknownCommandsAndTypesDrawNothing) {
    Drawing drawing("<path d='M1 2'/><linearGradient id='g'/><path d='' fill='url(#g)'/><g/>");
    std::vector<Element>& elements = drawing.document->elements;
    for (const uint32_t type : {3U, 4U, 2U, 5U, 6U})
        elements[1].path.commands.emplace_back(static_cast<PathCommand::Type>(type));
    elements[2].gradient.type = static_cast<Gradient::Type>(2);
    elements.pop_back();
    elements.emplace_back(static_cast<Element::Type>(1)).styleIndex = 1; // There is no such style.
    EXPECT_EQ(drawing.renderChildren(),
              lines("SaveGState; MoveToPoint 1 2; DrawPath 0; RestoreGState; SaveGState; RestoreGState; "
                    "SaveGState; RestoreGState; SaveGState; RestoreGState"));
}

TEST(DrawingsTest, ResolvesReferencesAmongManyDefinitions) {
    std::string body;
    for (int i = 0; i < 1000; ++i) {
        const std::string id = std::to_string(i);
        body += "<g id='" + id + "' transform='translate(" + id + " 1)'/><g id='" + id + "'/>";
    }
    const auto end = [](const std::string& id) { return "<use xlink:href='#" + id + "'/>"; };
    Drawing drawing(body + end("999") + end("0") + end("none"));
    EXPECT_THAT(drawing.renderChildren(),
                EndsWith(lines("SaveGState; TranslateCTM 0 0; SaveGState; ConcatCTM [1 0 0 1 999 1]; "
                               "RestoreGState; RestoreGState; SaveGState; TranslateCTM 0 0; SaveGState; "
                               "ConcatCTM [1 0 0 1 0 1]; RestoreGState; RestoreGState; "
                               "SaveGState; TranslateCTM 0 0; RestoreGState")));

    // Another document, whose elements have other indices.
    const std::string other =
        "<svg width='100' height='100'><g id='other'/>" + body + end("other") + "</svg>";
    drawing.document = SVGParser().CreateDocumentWithSVGData(other.c_str());
    drawing.renderer->SetDocument(drawing.document.get());
    EXPECT_THAT(drawing.renderChildren(),
                EndsWith(lines("SaveGState; TranslateCTM 0 0; SaveGState; RestoreGState; RestoreGState")));
}

TEST(DrawingsTest, ASecondRenderReusesGradientsAndClips) {
    Drawing drawing("<linearGradient id='g'/><clipPath id='c'><path d='M0 0'/></clipPath>"
                    "<g opacity='.5'><circle r='1' fill='url(#g)' clip-path='url(#c)'/></g>");
    EXPECT_THAT(drawing.renderChildren(), AllOf(HasSubstr("GradientCreate"), HasSubstr("PathCreate")));
    const std::string second = drawing.renderChildren();
    EXPECT_THAT(second, AllOf(Not(HasSubstr("Create")), HasSubstr("SetAlpha 0.5\n")));
    EXPECT_EQ(drawing.renderChildren(), second);
}

TEST(DrawingsTest, StopOnRequest) {
    Drawing drawing("<g><rect id='a'/><rect id='b'/></g><rect id='c'/>");
    const auto count = [](const std::string& calls, std::string_view call) {
        int found = 0;
        for (size_t at = 0; (at = calls.find(call, at)) != std::string::npos; ++at) ++found;
        return found;
    };
    drawing.renderer->SetDebugRendering(true);
    for (int elements = 0; elements <= 5; ++elements) {
        int asked = 0;
        drawing.renderer->SetStopRequest([&] { return ++asked > elements; });
        const std::string calls = drawing.render(CGRectMake(0, 0, 100, 100), 1, kRenderingStateDefault);
        EXPECT_EQ(count(calls, "DrawPath"),
                  std::max(elements - 2, 0));                         // The root and the group draw nothing.
        EXPECT_EQ(count(calls, "StrokeRect"), elements == 5 ? 2 : 1); // The debug frames.
        EXPECT_EQ(count(calls, "SaveGState"), count(calls, "RestoreGState"));
        EXPECT_EQ(asked, std::min(elements + 1, 5)); // Once it says stop, it is not asked again.
        asked = 0;
        const CGImageRef image =
            drawing.renderer->createCGImageFitToSize({9, 9}, 1, kRenderingStateDefault, nullptr);
        EXPECT_EQ(image != nullptr, elements == 5);
    }
}

TEST(DrawingsTest, TheDeepestDocumentNeedsLittleStack) {
#if OZMIRA_IS_SANITIZED
    GTEST_SKIP() << "sanitizers enlarge the frames";
#endif
    std::string body;
    for (int i = 0; i < 1000; ++i) body.insert(0, "<g fill='red' opacity='.999'>").append("</g>");
    Drawing drawing(body);
    ASSERT_EQ(drawing.document->elements.size(), 1001U);
    const char here = 0;
    drawing.renderChildren();
    EXPECT_LT(reinterpret_cast<uintptr_t>(&here) - recording::state.lowestStackAddress, 400U * 1024);
}
