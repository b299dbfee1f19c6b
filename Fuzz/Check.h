#pragma once

#include <cstdlib>

/// A property that must hold for every input; the fuzzer reports where it doesn't.
#define CHECK(condition)           \
    do {                           \
        if (!(condition)) abort(); \
    } while (false)
