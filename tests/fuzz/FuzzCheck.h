// What a fuzz target asserts of the code under test: a broken promise ends
// the run where it is seen, with the line, so that the engine keeps the input.
#pragma once

#include <cstdio>
#include <cstdlib>

#define Check(condition)                                                                           \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition);                   \
            std::abort();                                                                          \
        }                                                                                          \
    } while (0)
