#pragma once

#include <Ozmira/OZMCoreGraphicsRenderer.h>
#include <Ozmira/SVG/ozmSVGParser.h>

#include "recording_core_graphics.h"

#include <memory>
#include <string>
#include <string_view>

/// A parsed document and a renderer bound to it. The recorder is reset.
struct Drawing {
    std::unique_ptr<ozm::Document> document;
    std::unique_ptr<ozm::CoreGraphicsRenderer> renderer;
    CGContextRef context;

    /// Takes a whole "svg" element, or the content of one of 100 by 100.
    explicit Drawing(const std::string& svg) {
        const bool isWhole = svg.starts_with("<svg");
        const std::string text = isWhole ? svg : R"(<svg width="100" height="100">)" + svg + "</svg>";
        recording::reset();
        document = ozm::SVGParser().CreateDocumentWithSVGData(text.c_str());
        renderer = std::make_unique<ozm::CoreGraphicsRenderer>();
        renderer->SetDocument(document.get());
        context = recording::newContext();
    }

    /// Renders and returns all calls.
    std::string render(CGRect rect, double scale, const ozm::RenderingState& state) {
        recording::takeCalls();
        renderer->Render(rect, scale, state, context);
        return recording::takeCalls();
    }

    /// Renders at the document's own size and returns the calls for the root's children: without the calls
    /// that set up the view, which are always the same, and without saving and restoring the root's state.
    std::string renderChildren(const ozm::RenderingState& state = ozm::kRenderingStateDefault) {
        constexpr int callsBefore = 18;
        const std::string after = "RestoreGState\nRestoreGState\n";
        const std::string calls = render(CGRectMake(0, 0, 100, 100), 1, state);
        size_t begin = 0;
        for (int i = 0; i < callsBefore; ++i) begin = calls.find('\n', begin) + 1;
        return calls.ends_with(after) ? calls.substr(begin, calls.size() - after.size() - begin) : calls;
    }
};

/// Converts a list of calls separated by "; " to lines, as the recorder writes them.
inline std::string lines(std::string_view calls) {
    std::string result;
    for (size_t i = 0; i < calls.size(); ++i) {
        const bool isSeparator = calls.substr(i, 2) == "; ";
        result += isSeparator ? '\n' : calls[i];
        i += isSeparator;
    }
    return result + '\n';
}
