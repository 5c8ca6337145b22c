/*
 * Global memory blocks shared between a host and a filter module.
 *
 * The filter allocates its parameter record (FilterRecord.parameters) here
 * and the host keeps it between selectors, may read its size and bytes (to
 * keep it across runs of a command-line host), and frees it when it is done.
 * Both sides go through these functions, so either side may free a block the
 * other allocated. The handle is the address of the data: it is never moved.
 */
#ifndef PLUMET_SDK_PIGLOBAL_H
#define PLUMET_SDK_PIGLOBAL_H

#include <stddef.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#ifdef __cplusplus
extern "C" {
#endif

enum {
    PIGlobalFixed = 0x00,
    PIGlobalZeroInit = 0x40 /* fixed and zero-filled */
};

/* The block is preceded by a header holding its size, aligned for any type. */
typedef union PIGlobalHeader {
    size_t size;
    max_align_t align;
} PIGlobalHeader;

static inline void* PIGlobalAlloc(unsigned flags, size_t size) {
    if (size > SIZE_MAX - sizeof(PIGlobalHeader)) return NULL;
    PIGlobalHeader* h = (PIGlobalHeader*)malloc(sizeof(PIGlobalHeader) + size);
    if (!h) return NULL;
    h->size = size;
    if (flags & PIGlobalZeroInit) memset(h + 1, 0, size);
    return h + 1;
}

static inline size_t PIGlobalSize(const void* block) {
    return block ? ((const PIGlobalHeader*)block - 1)->size : 0;
}

static inline void PIGlobalFree(void* block) {
    if (block) free((PIGlobalHeader*)block - 1);
}

#ifdef __cplusplus
}
#endif

#endif
