#pragma once

#include "rules/finding_list.h"
#include "scene/scene.h"

#include <vector>

namespace ozm::conform {

/// Turns the groups of a scene into a list of shapes that Ozmira draws alike: none has both a gradient and
/// another paint, dashes, or an opacity that would let its parts or its neighbours show through.
class Splitter {
public:
    Splitter(Scene& scene, FindingList& findings) : m_scene(scene), m_findings(findings) {}

    /// Turn every stroke into a filled outline.
    void SetOutlineStrokes(bool isOn) { m_outlineStrokes = isOn; }

    /// Some stroke was turned into an outline for that reason.
    bool HasOutlined() const { return m_hasOutlined; }

    /// The shapes of a group in the order in which they are painted. Empties the group.
    std::vector<Shape> Split(Group& group);

private:
    void SplitShape(Shape shape, std::vector<Shape>& out);
    /// Gives a shape that a gradient fills under the even-odd rule the outline of the same area under the
    /// other one.
    void RewindForGradient(Shape& shape) const;
    /// The stroke of a shape as shapes of their own.
    void SplitStroke(const Shape& shape, std::vector<Shape>& out);
    /// The shapes once for each part of the group's mask.
    std::vector<Shape> ApplyMask(const Group& group, const std::vector<Shape>& shapes);
    void Fade(const Group& group, std::vector<Shape>& shapes);
    static bool Overlapping(const std::vector<Shape>& shapes);
    /// Cuts from each shape what others hide. False when translucent shapes overlap.
    bool CutHidden(std::vector<Shape>& shapes);
    /// Replaces shapes of plain colours by the areas that show one mixed colour each. False for others.
    bool Composite(std::vector<Shape>& shapes);
    void CutOwn(const Shape& shape, const Path& above, std::vector<Shape>& out);

    Scene& m_scene;
    FindingList& m_findings;
    bool m_outlineStrokes = false, m_hasOutlined = false;
};

} // namespace ozm::conform
