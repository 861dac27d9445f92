// SPDX-License-Identifier: MIT
#include "common/Avx2.h"

#if defined(VORLIX_AVX2)
#  define VORLIX_SCAN_BYTES 32
#  define VORLIX_SCAN_CODE VORLIX_AVX2
#  define VORLIX_SCAN_INLINE VORLIX_AVX2_INLINE
#  include "views/store/ScanBody.h"
#endif
