#pragma once

#include "files/drawing_file.h"
#include "report/drawing_check.h"

#include <Ozmira/ozmElement.h>

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace ozm::tool {

/// A drawing in figures.
struct DocumentSummary {
    /// Elements by kind, indexed by `Element::Type`.
    std::array<uint64_t, 9> elementCounts{};
    uint64_t hiddenCount = 0;
    DrawingCost cost;
    std::string problem;              ///< If not empty, why the drawing can't be drawn.
    std::set<std::string> missingIds; ///< Ids that references name but no element has.
    /// Rules of errors and warnings, and how often each was met.
    std::map<std::string_view, uint64_t> differences;
};

/// Calls visit(name, count) for each kind of element that the document has.
void ForEachElementCount(const DocumentSummary& summary,
                         const std::function<void(std::string_view name, uint64_t count)>& visit);

/// The number of gradients.
uint64_t GradientCount(const DocumentSummary& summary);

/// Summarises a drawing, which must have elements.
DocumentSummary Summarise(const Drawing& drawing);

} // namespace ozm::tool
