#include "ozmSpareLists.h"

#include <new>

namespace ozm {
namespace {

#if defined(__SANITIZE_ADDRESS__)
#define OZMIRA_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define OZMIRA_ADDRESS_SANITIZER 1
#endif
#endif

constinit thread_local SpareLists* ofThread = nullptr;
// Documents may outlive the thread's variables.
constinit thread_local bool isThreadEnding = false;

struct Owner {
    ~Owner() {
        delete std::exchange(ofThread, nullptr);
        isThreadEnding = true;
    }
};

/// Null when memory runs out, too.
SpareLists* MakeForThread() noexcept {
    if (ofThread || isThreadEnding) return ofThread;
#ifdef OZMIRA_ADDRESS_SANITIZER
    return nullptr; // It finds more errors when memory is not used again.
#else
    thread_local Owner owner;
    return ofThread = new (std::nothrow) SpareLists;
#endif
}

} // namespace

SpareLists* SpareLists::OfThread() noexcept { return ofThread; }

void SpareLists::Keep(std::vector<PathCommand>& commands) noexcept {
    if (commands.empty()) return;
    SpareLists* const spares = MakeForThread();
    if (!spares) return;
    for (PathCommand& command : commands) {
        if (command.type == PathCommand::Type::LineTo) spares->Of<TVec2<double>>().Keep(command.points);
        if (command.type == PathCommand::Type::CurveTo) spares->Of<BezierCurve>().Keep(command.curves);
    }
}

} // namespace ozm
