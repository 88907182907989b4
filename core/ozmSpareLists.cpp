#include "ozmSpareLists.h"

#include <memory>
#include <new>

#include <pthread.h>

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

/// Destroys a thread's lists when it ends. A key of POSIX and no destructor of C++, because registering one
/// of those ends the program when memory is short.
class EndOfThread {
public:
    EndOfThread() noexcept : m_works(pthread_key_create(&m_key, Destroy) == 0) {}
    bool Watch(SpareLists* lists) const noexcept { return m_works && pthread_setspecific(m_key, lists) == 0; }

private:
    static void Destroy(void* lists) {
        ofThread = nullptr;
        delete static_cast<SpareLists*>(lists);
    }

    pthread_key_t m_key{};
    bool m_works;
};

/// Null when memory runs out, too.
SpareLists* MakeForThread() noexcept {
    if (ofThread) return ofThread;
#ifdef OZMIRA_ADDRESS_SANITIZER
    return nullptr; // It finds more errors when memory is not used again.
#else
    static const EndOfThread endOfThread;
    std::unique_ptr<SpareLists> lists(new (std::nothrow) SpareLists);
    if (lists && endOfThread.Watch(lists.get())) ofThread = lists.release();
    return ofThread;
#endif
}

} // namespace

SpareLists* SpareLists::OfThread() noexcept { return ofThread; }

void SpareLists::Keep(Path& path) noexcept {
    if (path.commands.empty()) return;
    SpareLists* const spares = MakeForThread();
    if (!spares) return;
    // A command without a list is destroyed without asking for its type once more, which processors guess
    // badly.
    const auto keep = [](PathCommand& command, auto& list, auto& lists) {
        lists.Keep(list);
        if (list.capacity() == 0) command.type = PathCommand::Type::ClosePath;
    };
    for (PathCommand& command : path.commands) {
        if (command.type == PathCommand::Type::LineTo) {
            keep(command, command.points, spares->Get<ListsByLength<TVec2<double>>>());
        } else if (command.type == PathCommand::Type::CurveTo) {
            keep(command, command.curves, spares->Get<ListsByLength<BezierCurve>>());
        }
    }
    spares->Get<CommandLists>().Keep(path.commands);
}

} // namespace ozm
