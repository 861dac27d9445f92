// SPDX-License-Identifier: MIT

// With registers that every 64-bit processor has.
#define VORLIX_SCAN_BYTES 16
#define VORLIX_SCAN_CODE
#define VORLIX_SCAN_INLINE inline
#include "views/store/ScanBody.h"
