#pragma once

#include <Ozmira/ozmGradient.h>
#include <Ozmira/ozmPath.h>
#include <Ozmira/ozmTransform.h>

#include <cstdint>
#include <string>
#include <vector>

namespace ozm {

/// In place of an index into `Document::elements`: no element.
inline constexpr uint64_t kNoElement = ~uint64_t{0};

/// What a container element carries.
struct Group {
    std::vector<uint64_t> children; ///< Indices into `Document::elements`, in document order.
};

/// One element of a document: `type`, the payload that it selects, and what all kinds share.
struct Element {
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
        Path path;                      ///< Keeps its address for as long as the document is not changed.
        std::string href;               ///< Id of the referenced element, without "#".
        Gradient gradient;              ///< Keeps its address for as long as the document is not changed.
    };

    /// Payload of plain numbers, in user units. Unnamed structs are C, and an extension that C++ compilers
    /// share.
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
    int32_t styleIndex = -1; ///< Index into `Document::styles`; -1: no style of its own.
    bool hidden = false;     ///< Neither the element nor anything under it is drawn.

    /// An element whose payload is zero or empty.
    explicit Element(Type ofType);
    Element(const Element& other);
    /// Takes lists and strings over and leaves empty ones in `other`.
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

/// True for the kinds that hold `children`.
constexpr bool IsContainer(Element::Type type) {
    return type == Element::Type::Group || type == Element::Type::ClipPath || type == Element::Type::Defs;
}

} // namespace ozm
