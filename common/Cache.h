// SPDX-License-Identifier: MIT
#pragma once

/// Begins to bring what lies at `place` into the cache, so that it's there when it's read soon. Any address will do.
inline void expectRead([[maybe_unused]] const void *place)
{
#if defined(__GNUC__) || defined(__clang__)
    __builtin_prefetch(place);
    asm volatile("" : : "r"(place)); // else GCC leaves out calls of functions that do nothing but this
#endif
}
