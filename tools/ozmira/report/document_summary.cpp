#include "report/document_summary.h"

#include "base/errors.h"
#include "report/names.h"

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

void ForEachElementCount(const DocumentSummary& summary,
                         const std::function<void(std::string_view, uint64_t)>& visit) {
    for (size_t type = 0; type < summary.elementCounts.size(); ++type) {
        const uint64_t count = summary.elementCounts[type];
        if (count > 0) visit(NameOf(static_cast<Element::Type>(type)), count);
    }
}

uint64_t GradientCount(const DocumentSummary& summary) {
    return summary.elementCounts[static_cast<size_t>(Element::Type::GradientElement)];
}

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
