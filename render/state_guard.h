#pragma once

#include <Ozmira/ozmRenderingStack.h>

#include <CoreGraphics/CoreGraphics.h>

namespace ozm {

/// Saves a context's graphics state and, if given a stack, pushes a copy of its top record. Undoes both at
/// the end of the scope.
class StateGuard {
public:
    explicit StateGuard(CGContextRef context, RenderingStack* stack = nullptr)
        : m_context(context), m_stack(stack) {
        if (m_stack) m_stack->Save();
        CGContextSaveGState(m_context);
    }
    ~StateGuard() {
        if (m_stack) m_stack->Pop();
        CGContextRestoreGState(m_context);
    }
    StateGuard(const StateGuard&) = delete;
    StateGuard& operator=(const StateGuard&) = delete;

private:
    CGContextRef m_context;
    RenderingStack* m_stack;
};

} // namespace ozm
