#include "report/drawing_check.h"

#include "base/errors.h"
#include "base/text.h"
#include "base/tool_limits.h"

#include <string>

namespace ozm::tool {

DrawingCost CheckDrawing(const Document& document) {
    const DrawingCost cost = MeasureDrawing(document);
    if (cost.cycle != kNoElement) {
        const std::string& id = document.elements[cost.cycle].id;
        throw FileError("its references form a cycle" +
                        (id.empty() ? std::string() : " through \"#" + OnOneLine(id) + "\"") +
                        "; take out the use or clip-path that leads back");
    }
    if (cost.elements > kMaximumDrawnElements) {
        throw FileError("draws more than " + FormatCount(kMaximumDrawnElements) +
                        " elements once its references are followed; use fewer levels of use elements");
    }
    if (cost.segments > kMaximumDrawnSegments) {
        throw FileError("draws more than " + FormatCount(kMaximumDrawnSegments) +
                        " path segments once its references are followed; use fewer levels of use elements");
    }
    if (cost.depth > kMaximumDrawingDepth) {
        throw FileError("draws elements inside elements deeper than " + FormatCount(kMaximumDrawingDepth) +
                        " levels once its references are followed; shorten the chain of use elements");
    }
    return cost;
}

} // namespace ozm::tool
