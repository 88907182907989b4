#pragma once

#include <Ozmira/OZMCoreGraphicsRenderer.h>
#include <Ozmira/SVG/ozmSVGParser.h>

#include "recording_core_graphics.h"

#include <memory>
#include <string>
#include <string_view>

/// A parsed document, a renderer bound to it and a fresh recorder.
struct Drawing {
    std::unique_ptr<ozm::Document> document;
    std::unique_ptr<ozm::CoreGraphicsRenderer> renderer;
    CGContextRef context;

    /// A whole "svg" element, or what stands inside one of 100 by 100.
    explicit Drawing(const std::string& svg) {
        const bool isWhole = svg.starts_with("<svg");
        const std::string text = isWhole ? svg : R"(<svg width="100" height="100">)" + svg + "</svg>";
        recording::reset();
        document = ozm::SVGParser().CreateDocumentWithSVGData(text.c_str());
        renderer = std::make_unique<ozm::CoreGraphicsRenderer>();
        renderer->SetDocument(document.get());
        context = recording::newContext();
    }

    /// All calls of a render.
    std::string render(CGRect rect, double scale, const ozm::RenderingState& state) {
        recording::takeCalls();
        renderer->Render(rect, scale, state, context);
        return recording::takeCalls();
    }

    /// What the children of the root call in a render at the document's own size: without the frame, which is
    /// always the same, and without the root's own saved state.
    std::string renderChildren(const ozm::RenderingState& state = ozm::kRenderingStateDefault) {
        constexpr int callsBefore = 18;
        const std::string after = "RestoreGState\nRestoreGState\n";
        const std::string calls = render(CGRectMake(0, 0, 100, 100), 1, state);
        size_t begin = 0;
        for (int i = 0; i < callsBefore; ++i) begin = calls.find('\n', begin) + 1;
        return calls.ends_with(after) ? calls.substr(begin, calls.size() - after.size() - begin) : calls;
    }
};

/// A list of calls as the recorder writes it, from one separated by "; ".
inline std::string lines(std::string_view calls) {
    std::string result;
    for (size_t i = 0; i < calls.size(); ++i) {
        const bool isSeparator = calls.substr(i, 2) == "; ";
        result += isSeparator ? '\n' : calls[i];
        i += isSeparator;
    }
    return result + '\n';
}
