// Checks what must hold for any input; on failure the fuzzer keeps the input and stops.
#pragma once

#include <cstdio>
#include <cstdlib>

#define EXPECT(condition)                                                                          \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: not so: %s\n", __FILE__, __LINE__, #condition);           \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)
