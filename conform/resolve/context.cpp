#include "resolve/context.h"

#include <cmath>

namespace ozm::conform {

double Context::Diagonal() const { return std::sqrt((viewWidth * viewWidth + viewHeight * viewHeight) / 2); }

bool Context::IsFollowing(const Node& node) const {
    for (const Reference* at = references; at; at = at->outer) {
        if (at->node == &node) return true;
    }
    return false;
}

} // namespace ozm::conform
