// Run-time support for blocks, following the block ABI that clang documents. GNUstep's own implementation
// leaves copied blocks on the stack; the definitions here replace its symbols.
#import <Foundation/Foundation.h>

#include <Block.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

extern "C" {
// Compiled code stores the address of one of these in the first word of a block.
void* _NSConcreteStackBlock[32];
void* _NSConcreteMallocBlock[32];
void* _NSConcreteGlobalBlock[32];

// Called by the copy and dispose helpers that the compiler generates for captured variables.
void _Block_object_assign(void* destination, const void* object, int kind);
void _Block_object_dispose(const void* object, int kind);
}

namespace {

// The compiler prescribes the layouts below.
enum BlockFlags : int32_t {
    kReferenceCountMask = 0xFFFF,
    kIsOnHeap = 1 << 24,
    kHasCopyDispose = 1 << 25,
    kIsGlobal = 1 << 28,
};

struct BlockDescriptor {
    unsigned long reserved;
    unsigned long size;
    void (*copy)(void* destination, const void* source); // only with kHasCopyDispose, like the next
    void (*dispose)(const void* block);
};

struct Block {
    void* isa;
    int32_t flags;
    int32_t reserved;
    void* invoke;
    const BlockDescriptor* descriptor;
};

struct ByrefVariable { // a __block variable
    void* isa;
    ByrefVariable* forwarding;
    int32_t flags;
    uint32_t size;
    void (*keep)(ByrefVariable* destination,
                 ByrefVariable* source); // only with kHasCopyDispose, like the next
    void (*destroy)(ByrefVariable* variable);
};

enum CaptureKind : int { kObject = 3, kBlock = 7, kByref = 8, kCalledFromByref = 128 };

void retain(int32_t& flags) { __atomic_fetch_add(&flags, 1, __ATOMIC_RELAXED); }

/// Returns true if this was the last reference.
bool release(int32_t& flags) {
    return (__atomic_fetch_sub(&flags, 1, __ATOMIC_ACQ_REL) & kReferenceCountMask) == 1;
}

void* copyToHeap(const void* source, size_t size) {
    void* copy = std::malloc(size);
    if (!copy) throw std::bad_alloc();
    return std::memcpy(copy, source, size);
}

ByrefVariable* copyByref(ByrefVariable* source) {
    ByrefVariable* current = source->forwarding;
    if (current->flags & kIsOnHeap) {
        retain(current->flags);
        return current;
    }
    auto* copy = static_cast<ByrefVariable*>(copyToHeap(source, source->size));
    copy->flags =
        (source->flags & ~kReferenceCountMask) | kIsOnHeap | 2; // two references: the block's and the scope's
    copy->forwarding = copy;
    source->forwarding = copy;
    if (source->flags & kHasCopyDispose) source->keep(copy, source);
    return copy;
}

void releaseByref(ByrefVariable* variable) {
    ByrefVariable* current = variable->forwarding;
    if (!(current->flags & kIsOnHeap) || !release(current->flags)) return;
    if (current->flags & kHasCopyDispose) current->destroy(current);
    std::free(current);
}

} // namespace

void* _Block_copy(const void* block) {
    auto* source = static_cast<Block*>(const_cast<void*>(block));
    if (!source || (source->flags & kIsGlobal)) return source;
    if (source->flags & kIsOnHeap) {
        retain(source->flags);
        return source;
    }
    auto* copy = static_cast<Block*>(copyToHeap(source, source->descriptor->size));
    copy->isa = _NSConcreteMallocBlock;
    copy->flags = (source->flags & ~kReferenceCountMask) | kIsOnHeap | 1;
    if (source->flags & kHasCopyDispose) source->descriptor->copy(copy, source);
    return copy;
}

void _Block_release(const void* block) {
    auto* object = static_cast<Block*>(const_cast<void*>(block));
    if (!object || !(object->flags & kIsOnHeap) || !release(object->flags)) return;
    if (object->flags & kHasCopyDispose) object->descriptor->dispose(object);
    std::free(object);
}

void _Block_object_assign(void* destination, const void* object, int kind) {
    auto& slot = *static_cast<const void**>(destination);
    if (kind & kCalledFromByref)
        slot = object; // a __block variable borrows its object
    else if (kind & kByref)
        slot = copyByref(static_cast<ByrefVariable*>(const_cast<void*>(object)));
    else if (kind == kBlock)
        slot = _Block_copy(object);
    else
        slot = [static_cast<id>(const_cast<void*>(object)) retain];
}

void _Block_object_dispose(const void* object, int kind) {
    if (kind & kCalledFromByref) return;
    if (kind & kByref)
        releaseByref(static_cast<ByrefVariable*>(const_cast<void*>(object)));
    else if (kind == kBlock)
        _Block_release(object);
    else
        [static_cast<id>(const_cast<void*>(object)) release];
}
