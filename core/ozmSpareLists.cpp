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

} // namespace

SpareLists* SpareLists::OfThread() noexcept { return ofThread; }

SpareLists* SpareLists::MakeForThread() noexcept {
    if (ofThread || isThreadEnding) return ofThread;
#ifdef OZMIRA_ADDRESS_SANITIZER
    return nullptr; // It finds more errors when memory is not used again.
#else
    thread_local Owner owner;
    return ofThread = new (std::nothrow) SpareLists;
#endif
}

} // namespace ozm
