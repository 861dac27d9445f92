// SPDX-License-Identifier: MIT
#pragma once

// Functions for processors that have AVX2, as nearly all have, beside plainer ones for the others. VORLIX_AVX2 in front
// of a function lets it use these instructions; without hasAvx2() it mustn't be called. Neither exists for other
// compilers, for other processors, and with VORLIX_PLAIN_LANES.
//
// FMA isn't among these instructions: it would round once where a product and a sum round twice.

#if defined(__x86_64__) && defined(__GNUC__) && !defined(VORLIX_PLAIN_LANES)
#  define VORLIX_AVX2 __attribute__((target("avx2,bmi,bmi2")))
#  define VORLIX_AVX2_INLINE __attribute__((target("avx2,bmi,bmi2"), always_inline)) inline

/// Whether this processor has what VORLIX_AVX2 uses.
inline bool hasAvx2()
{
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2");
}
#else
constexpr bool hasAvx2()
{
    return false;
}
#endif
