#pragma once

#include <Ozmira/ozmDimension.h>
#include <Ozmira/ozmGradient.h>
#include <Ozmira/OzmiraExport.h>
#include <Ozmira/ozmPath.h>
#include <Ozmira/ozmStyle.h>
#include <Ozmira/ozmTransform.h>

#include <cstdint>
#include <string>
#include <vector>

namespace ozm {

/// Stands for "no element" where an index into `Document::elements` is expected.
inline constexpr uint64_t kNoElement = ~uint64_t{0};

/// The payload of a container element.
struct Group {
    std::vector<uint64_t> children; ///< Indices into `Document::elements`, in document order.
};

/// One element of a document: a type, the payload that the type selects, and what all types have in common.
struct OZM_CXX_EXPORT Element {
    /// The type of an element, with the SVG elements that it represents and the members of its payload.
    enum class Type : uint32_t {
        Group = 0,           ///< `svg`, `g`, `a`: `children`
        Path = 2,            ///< `path`, `line`, `polyline`, `polygon`: `path`
        Ellipse = 3,         ///< `circle`, `ellipse`: `center`, `radius`
        Rect = 4,            ///< `rect`: `x`, `y`, `width`, `height`, `rx`, `ry`
        Use = 5,             ///< `use`: `position`, `href`
        ClipPath = 6,        ///< `clipPath`: `children`
        Defs = 7,            ///< `defs`: `children`
        GradientElement = 8, ///< `linearGradient`, `radialGradient`: `gradient`
    };

    Type type;

    /// Payload that owns memory.
    union {
        std::vector<uint64_t> children; ///< Indices into `Document::elements`, in document order.
        Path path;                      ///< Its address is stable while the document does not change.
        std::string href;               ///< Id of the referenced element, without "#".
        Gradient gradient;              ///< Its address is stable while the document does not change.
    };

    /// Payload of plain numbers, in user units. Unnamed structs are standard C and a common extension of C++.
    __extension__ union {
        TVec2<double> position; ///< Offset of a `use`.
        struct {
            TVec2<double> center;
            TVec2<double> radius; ///< Horizontal and vertical; equal for a circle.
        };
        struct {
            double x, y, width, height;
            double rx, ry; ///< Corner radii.
        };
    };

    std::string id;
    Transform transform = TransformIdentity;
    int32_t styleIndex = -1; ///< Index into `Document::styles`; -1 for an element that sets no property.
    bool hidden = false;     ///< Neither the element nor anything under it is drawn.

    /// Creates an element whose payload is zero or empty.
    explicit Element(Type ofType);
    Element(const Element& other);
    /// Moves lists and strings out of `other`, which is left with empty ones.
    Element(Element&& other) noexcept;
    Element& operator=(const Element&) = delete;
    Element& operator=(Element&&) = delete;
    ~Element();

private:
    void ConstructEmpty() noexcept;
    void CopyNumbers(const Element& other) noexcept;
};

} // namespace ozm

OZM_RECORD(ozm::Element);

namespace ozm {

/// True for the types whose payload is `children`.
constexpr bool IsContainer(Element::Type type) {
    return type == Element::Type::Group || type == Element::Type::ClipPath || type == Element::Type::Defs;
}

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
