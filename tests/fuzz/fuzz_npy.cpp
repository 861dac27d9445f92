// SPDX-License-Identifier: MIT

// Any bytes as a NumPy array: the header, of every length, and the samples behind it.

#include "fuzz/Check.h"
#include "views/reading/SampleLayout.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

SHeader header(const QByteArray &front)
{
    const SHeader header = npyHeader(front);
    if (!header.layout && header.obstacle.isEmpty())
        fail("header", "neither a layout nor words");
    if (!header.layout)
        return header;
    const SSampleLayout &layout = *header.layout;
    if (layout.channels < 1 || layout.frameSize() < 1 || layout.headerSize > front.size() || layout.frames < -1)
        fail("header", "a layout that can't be");
    describe(layout);
    return header;
}

/// Converts what is behind the header, each channel to memory of just that size.
void convertAll(const QByteArray &bytes, const SSampleLayout &layout)
{
    const QByteArray samples = bytes.mid(int(layout.headerSize));
    const qint64 there = samples.size() / layout.frameSize();
    const qint64 frames = layout.frames < 0 ? there : std::min(there, layout.frames);
    for (int channel = 0; channel < std::min(layout.channels, 8); ++channel) {
        std::vector<char> target(size_t(frames * sizeOf(storedAs(layout.type))));
        convertSamples(samples.constData(), frames, layout, channel, target.data());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    const SHeader whole = header(bytes);
    if (whole.layout)
        convertAll(bytes, *whole.layout);
    for (int front = 0; front < int(std::min(size, size_t(200))); ++front) {
        const SHeader part = header(bytes.left(front));
        if (part.layout && !whole.layout)
            fail("header", "known from a part but not from the whole");
        if (!part.layout && part.needed > 0 && part.needed <= front)
            fail("header", "asks for what it has");
    }
    return 0;
}
