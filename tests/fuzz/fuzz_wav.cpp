// SPDX-License-Identifier: MIT

// Any bytes as a WAV file: the header, of every length, and the samples behind it.

#include "fuzz/SampleHeader.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    const qint64 fileSize = size % 2 ? -1 : qint64(size); // -1: not known
    checkFile(bytes, wavHeader(bytes, fileSize), [](const QByteArray &front) { return wavHeader(front, -1); });
    return 0;
}
