#include "foundation/ListMemory.h"

#include <cstdlib>

namespace {

void* StandardAllocate(std::size_t bytes) {
    return std::malloc(bytes);
}

ListAllocateFn gListAllocate = StandardAllocate;

} // namespace

void* ListAllocate(std::size_t bytes) {
    return gListAllocate(bytes);
}

void ListFree(void* block) {
    std::free(block);
}

ListAllocateFn SetListAllocateHook(ListAllocateFn hook) {
    ListAllocateFn previous = gListAllocate;
    gListAllocate = hook ? hook : StandardAllocate;
    return previous;
}
