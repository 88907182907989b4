#include "samples.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <fstream>
#include <sstream>

namespace ozm::test {
namespace {

Sample ReadExample(const std::string& name) {
    const std::string file = OZMIRA_EXAMPLES "/" + name + ".svg";
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return {name, text.str(), file};
}

std::string Repeated(int times, std::string (*part)(const std::string& number)) {
    std::string all;
    for (int i = 0; i < times; ++i) all += part(std::to_string(i));
    return all;
}

// Its names are too long to be stored inside a std::string, and its lists too long for the renderer's stack
// buffers.
std::string MakeCrowdedDrawing() {
    const auto definition = [](const std::string& number) {
        return "<path id='a-name-of-some-length-" + number + "' d='M1 1h9v9C3 4 5 6 7 8S9 9 3 3z'/>";
    };
    const auto stop = [](const std::string& number) {
        return "<stop offset='0." + number + "' stop-color='rgb(" + number + ",9,99)' stop-opacity='.9'/>";
    };
    return "<svg viewBox='0 0 48 48'><defs>" + Repeated(40, definition) +
           "<linearGradient id='a-gradient-with-many-stops' gradientTransform='rotate(9)'>" +
           Repeated(30, stop) +
           "</linearGradient><clipPath id='the-inner-clipping-path'><ellipse cx='20' cy='20' rx='19' "
           "ry='15'/>"
           "<path d='M0 0L40 0 20 40z'/><rect width='9' height='9' rx='3'/></clipPath>"
           "<clipPath id='the-outer-clipping-path'><use xlink:href='#the-inner-clipping-path'/></clipPath>"
           "</defs><g clip-path='url(#the-outer-clipping-path)' stroke='navy' style='fill-rule:evenodd;"
           "stroke-width:1.5;stroke-linejoin:round;stroke-linecap:square;stroke-miterlimit:3;opacity:.8'>"
           "<path fill='url(#a-gradient-with-many-stops)' d='M2 2l40 3-9 30C9 9 8 40 2 40s9-9 9-19z'/>"
           "<polygon points='5,5 40,9 22,44' transform='skewX(9) scale(.7)' fill='teal'/>"
           "<use xlink:href='#a-name-of-some-length-39' x='20' y='9' stroke-opacity='.4'/></g></svg>";
}

} // namespace

const std::vector<Sample>& Samples() {
    static const std::vector<Sample> samples = [] {
        std::vector<Sample> all = {{"crowded", MakeCrowdedDrawing(), ""}};
        for (const char* name : {"badge", "icon", "landscape", "lines", "petals"})
            all.push_back(ReadExample(name));
        return all;
    }();
    return samples;
}

std::unique_ptr<Document> Parse(const std::string& text) {
    return SVGParser().CreateDocumentWithSVGData(text.c_str());
}

const RenderingState& DashedState() {
    static const RenderingState state = [] {
        RenderingState dashed = kRenderingStateDefault;
        dashed.dashArray = {5, 3, 1};
        dashed.dashOffset = 2;
        return dashed;
    }();
    return state;
}

Image Draw(CoreGraphicsRenderer& renderer) {
    return Image(renderer.createCGImageFitToSize({48, 0}, 1, DashedState(), nullptr));
}

Image Draw(Document& document) {
    CoreGraphicsRenderer renderer;
    renderer.SetDocument(&document);
    return Draw(renderer);
}

std::vector<uint8_t> PixelsOf(const Image& image) {
    if (!image) return {};
    const Owned<CFDataRef> data(CGDataProviderCopyData(CGImageGetDataProvider(image.get())));
    const UInt8* const bytes = CFDataGetBytePtr(data.get());
    return {bytes, bytes + CFDataGetLength(data.get())};
}

} // namespace ozm::test
