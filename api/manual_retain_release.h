// The object layer's own sources release objects themselves; its callers may use either way.
#pragma once

#if __has_feature(objc_arc)
#error "Ozmira's objects are written for manual retain and release: compile this file with -fno-objc-arc."
#endif
