#include "report/summary_json.h"

#include "report/document_json.h"

namespace ozm::tool {

void WriteMembers(JSONWriter& json, const Document& document, const DocumentSummary& summary) {
    json.Key("size");
    json.Object([&] {
        json.Key("width");
        WriteJSON(json, document.size.width);
        json.Key("height");
        WriteJSON(json, document.size.height);
    });
    json.Key("viewBox");
    WriteJSON(json, document.viewBox);
    json.Key("elements");
    json.Object([&] {
        ForEachElementCount(summary,
                            [&](std::string_view name, uint64_t count) { json.Member(name, count); });
    });
    json.Member("hidden", summary.hiddenCount);
    json.Member("styles", document.styles.size());
    json.Member("definitions", document.definitions.size());
    json.Member("gradients", GradientCount(summary));
    json.Key("drawing");
    json.Object([&] {
        json.Member("possible", summary.problem.empty());
        if (!summary.problem.empty()) json.Member("problem", summary.problem);
        json.Member("elements", summary.cost.elements);
        json.Member("segments", summary.cost.segments);
        json.Member("depth", summary.cost.depth);
    });
    json.Key("missing");
    json.Array([&] {
        for (const std::string& id : summary.missingIds) json.Value(id);
    });
    json.Key("differences");
    json.Object([&] {
        for (const auto& [rule, count] : summary.differences) json.Member(rule, count);
    });
}

} // namespace ozm::tool
