#pragma once

#include <Ozmira/ozmDimension.h>
#include <Ozmira/ozmElement.h>
#include <Ozmira/ozmStyle.h>
#include <Ozmira/ozmTransform.h>

#include <cstdint>
#include <string>
#include <vector>

namespace ozm {

/// An id and the element that has it.
struct Definition {
    std::string id;
    uint64_t elementIndex = 0; ///< Index into `Document::elements`.
};

} // namespace ozm

OZM_RECORD(ozm::Definition);

namespace ozm {

/// A parsed drawing, which owns all its parts. Elements refer to each other by index or id. One parse fills
/// the document; it does not change afterwards. A document made from malformed text has no elements.
struct Document {
    uint32_t reserved0 = 0;   ///< Always 0.
    uint32_t reserved1 = 0;   ///< Always 0.
    std::string reservedText; ///< Always empty.
    Rectf viewBox;            ///< User units.
    DimensionSize size{{Dimension::Unit::PX, 0}, {Dimension::Unit::PX, 0}};
    std::vector<Definition> definitions; ///< In document order; ids may repeat.
    std::vector<Element> elements; ///< The tree in pre-order: index 0 is the root, parents precede children.
    std::vector<Style> styles;     ///< Indexed by `Element::styleIndex`.
};

} // namespace ozm
