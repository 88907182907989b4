#include "report/document_summary.h"

#include "base/errors.h"

#include <Ozmira/ozmReferences.h>
#include <OzmiraConform/OzmiraConform.h>

namespace ozm::tool {
namespace {

std::set<std::string> FindMissingIds(const Document& document) {
    References references(document);
    std::set<std::string> missing;
    const auto check = [&](const std::string& id) {
        if (!id.empty() && !references.Find(id)) missing.insert(id);
    };
    for (const Element& element : document.elements) {
        if (element.type == Element::Type::Use) check(element.href);
    }
    for (const Style& style : document.styles) {
        for (const StyleProperty& property : style.properties) {
            if (property.type == StyleProperty::Type::FillURL ||
                property.type == StyleProperty::Type::ClipPathURL) {
                check(property.url);
            }
        }
    }
    return missing;
}

} // namespace

DocumentSummary Summarise(const Drawing& drawing) {
    const Document& document = *drawing.document;
    DocumentSummary summary;
    for (const Element& element : document.elements) {
        ++summary.elementCounts[static_cast<size_t>(element.type)];
        if (element.hidden) ++summary.hiddenCount;
    }
    try {
        summary.cost = CheckDrawing(document);
    } catch (const FileError& error) {
        summary.problem = error.what();
    }
    summary.missingIds = FindMissingIds(document);
    for (const conform::Finding& finding : conform::Check(drawing.text)) {
        if (finding.severity != conform::Severity::Note) ++summary.differences[finding.rule];
    }
    return summary;
}

} // namespace ozm::tool
