#pragma once

#include <cstddef>

// Where list storage comes from. Lists take their blocks through ListAllocate
// and give them back through ListFree, so that a test can make allocation fail
// and check that a list survives it.

using ListAllocateFn = void* (*)(std::size_t bytes);

// Returns a block of the given size, or null when none can be got.
void* ListAllocate(std::size_t bytes);
void ListFree(void* block);

// Replaces the allocator (null restores the standard one) and returns the one
// that was in place. Meant for tests only.
ListAllocateFn SetListAllocateHook(ListAllocateFn hook);
