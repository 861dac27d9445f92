// SPDX-License-Identifier: MIT

// Any bytes as a NumPy array: the header, of every length, and the samples behind it.

#include "fuzz/SampleHeader.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    checkFile(bytes, npyHeader(bytes), [](const QByteArray &front) { return npyHeader(front); });
    return 0;
}
