#pragma once

#include <Ozmira/ozmRenderingState.h>

#include <vector>

namespace ozm {

/// A stack of paint settings, one record for each nested element that is being drawn, the innermost on top.
/// Memory of popped records is reused.
class RenderingStack {
public:
    /// Appends a copy of `state`.
    void PushState(const RenderingState& state) { m_renderingStack.push_back(state); }
    /// Appends a copy of the top record; there must be one.
    void Save() { m_renderingStack.push_back(m_renderingStack.back()); }
    /// Removes the top record; there must be one.
    void Pop() { m_renderingStack.pop_back(); }
    /// The top record; there must be one. The reference is valid until the next push or pop.
    RenderingState& Top() { return m_renderingStack.back(); }

private:
    std::vector<RenderingState> m_renderingStack;
};

} // namespace ozm
