// Copying and releasing of blocks. A block that outlives the scope of its literal must be a copy. Blocks are
// no Objective-C objects here: `[block copy]` and collections of blocks do not work.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/// A block on the heap with the variables that it captured: objects are retained, blocks copied. A block that
/// is on the heap already only gains a reference. NULL is passed through.
void* _Block_copy(const void* block);
/// Drops a reference; the last one releases what was captured. NULL, and blocks not on the heap, are left
/// alone.
void _Block_release(const void* block);

#ifdef __cplusplus
}
#endif

#define Block_copy(block) ((__typeof__(block))_Block_copy((const void*)(block)))
#define Block_release(block) _Block_release((const void*)(block))
