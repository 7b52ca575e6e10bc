#pragma once

/// Grand Central Dispatch, as far as it takes to hand a block to a global queue. It is no part of
/// this system: the functions are null unless a library that has them was loaded before whoever
/// calls them, so ask before calling.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef struct dispatch_queue_s* dispatch_queue_t;

enum { DISPATCH_QUEUE_PRIORITY_DEFAULT = 0 };

__attribute__((weak)) CF_EXPORT dispatch_queue_t dispatch_get_global_queue(long priority,
                                                                           unsigned long flags);

#ifdef __BLOCKS__
typedef void (^dispatch_block_t)(void);

/// Runs a copy of the block on another thread, soon, and returns at once.
__attribute__((weak)) CF_EXPORT void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
#endif

CF_EXTERN_C_END
