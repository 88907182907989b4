// Copies and releases blocks. A block that outlives the scope of its literal must be a copy. Blocks are not
// Objective-C objects here: `[block copy]` and collections of blocks do not work.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/// Copies a block and its captured variables to the heap: captured objects are retained, captured blocks are
/// copied. A block that is already on the heap only gains a reference. Returns NULL for NULL.
void* _Block_copy(const void* block);
/// Releases a reference; releasing the last one releases the captured variables. NULL and blocks that are not
/// on the heap are ignored.
void _Block_release(const void* block);

#ifdef __cplusplus
}
#endif

#define Block_copy(block) ((__typeof__(block))_Block_copy((const void*)(block)))
#define Block_release(block) _Block_release((const void*)(block))
