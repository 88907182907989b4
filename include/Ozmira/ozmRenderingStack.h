#pragma once

#include <Ozmira/ozmRenderingState.h>

#include <cstddef>
#include <vector>

namespace ozm {

/// The inherited paint settings of all open elements, the innermost on top. Memory of popped records stays
/// with the stack for the next ones.
class RenderingStack {
public:
    /// Appends a copy of `state`.
    void PushState(const RenderingState& state) {
        if (m_renderingStack.capacity() == 0) m_renderingStack.reserve(kFirstCapacity);
        m_renderingStack.push_back(state);
    }
    /// Appends a copy of the top record; there must be one.
    void Save() { m_renderingStack.push_back(m_renderingStack.back()); }
    /// Removes the top record; there must be one.
    void Pop() { m_renderingStack.pop_back(); }
    /// The top record, until the next push or pop; there must be one.
    RenderingState& Top() { return m_renderingStack.back(); }

private:
    static constexpr size_t kFirstCapacity = 8; ///< Few drawings are deeper.

    std::vector<RenderingState> m_renderingStack;
};

} // namespace ozm
