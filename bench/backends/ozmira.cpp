#include "backend.h"
#include "draw.h"

#include <Ozmira/SVG/ozmSVGParser.h>

namespace bench {

namespace {

class OzmiraDrawing final : public Drawing {
public:
    explicit OzmiraDrawing(std::unique_ptr<ozm::Document> document) : m_document(std::move(document)) {}

    bool Draw(unsigned size, void* pixels) override { return DrawIntoPixels(*m_document, size, pixels); }

private:
    std::unique_ptr<ozm::Document> m_document;
};

std::unique_ptr<ozm::Document> Read(const std::string& text) {
    ozm::SVGParser parser;
    std::unique_ptr<ozm::Document> document = parser.CreateDocumentWithSVGData(text.c_str());
    if (document->elements.empty()) return nullptr;
    return document;
}

bool Parse(const std::string& text) { return Read(text) != nullptr; }

std::unique_ptr<Drawing> Load(const std::string& text) {
    std::unique_ptr<ozm::Document> document = Read(text);
    if (!document) return nullptr;
    return std::make_unique<OzmiraDrawing>(std::move(document));
}

} // namespace

const Backend kOzmiraBackend{"Ozmira", Parse, Load};

} // namespace bench
