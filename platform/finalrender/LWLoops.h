// Marks for the loops over arrays that the compiler turns into vector code.
#pragma once

// Loops that run on several elements at a time: the arrays they read and
// write never overlap, which INDEPENDENT tells the compiler, and their
// conditions are selections, not branches.
#if defined(__clang__)
#define LWSL_INDEPENDENT _Pragma("clang loop vectorize(assume_safety)")
#elif defined(__GNUC__)
#define LWSL_INDEPENDENT _Pragma("GCC ivdep")
#else
#define LWSL_INDEPENDENT
#endif
// Where the processor has AVX2, the loops also come in a version for it,
// picked when the program loads; it has no fused multiply-add, so the
// results are the same.
#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__)
#define LWSL_WIDE __attribute__((target_clones("avx2", "default")))
#else
#define LWSL_WIDE
#endif
