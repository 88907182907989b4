// Any text must parse into a consistent document: indices in range, every element with at most one parent.
#include "require.h"

#include <Ozmira/ozmDebug.h>
#include <Ozmira/SVG/ozmSVGParser.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    ozm::SVGParser parser;
    const auto document = parser.CreateDocumentWithSVGData(text.c_str());
    Require(document != nullptr && parser.document == nullptr);

    const size_t count = document->elements.size();
    std::vector<int> parents(count);
    for (size_t i = 0; i < count; ++i) {
        const ozm::Element& element = document->elements[i];
        const auto styleCount = static_cast<int64_t>(document->styles.size());
        Require(element.styleIndex >= -1 && element.styleIndex < styleCount);
        Require(!ozm::to_string(element).empty());
        if (!ozm::IsContainer(element.type)) continue;
        uint64_t previous = i;
        for (const uint64_t child : element.children) {
            Require(child > previous && child < count && parents[child]++ == 0);
            previous = child;
        }
    }
    uint64_t previous = 0;
    for (const ozm::Definition& definition : document->definitions) {
        Require(definition.elementIndex > previous && definition.elementIndex < count);
        Require(!definition.id.empty() && document->elements[definition.elementIndex].id == definition.id);
        previous = definition.elementIndex;
    }
    return 0;
}
