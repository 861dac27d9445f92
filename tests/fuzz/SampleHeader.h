// SPDX-License-Identifier: MIT
#pragma once

#include "fuzz/Check.h"
#include "views/reading/SampleLayout.h"

#include <algorithm>
#include <vector>

// What holds for the header of any file of samples, and for the samples behind it.

inline void checkHeader(const SHeader &header, const QByteArray &front)
{
    if (!header.layout && header.obstacle.isEmpty())
        fail("header", "neither a layout nor words");
    if (!header.layout)
        return;
    const SSampleLayout &layout = *header.layout;
    if (layout.channels < 1 || layout.frameSize() < 1 || layout.headerSize > front.size() || layout.frames < -1)
        fail("header", "a layout that can't be");
    describe(layout);
}

/// Converts what is behind the header, each channel to memory of just that size.
inline void convertAll(const QByteArray &bytes, const SSampleLayout &layout)
{
    const QByteArray samples = bytes.mid(int(layout.headerSize));
    const qint64 there = samples.size() / layout.frameSize();
    const qint64 frames = layout.frames < 0 ? there : std::min(there, layout.frames);
    for (int channel = 0; channel < std::min(layout.channels, 8); ++channel) {
        std::vector<char> target(size_t(frames * sizeOf(storedAs(layout.type))));
        convertSamples(samples.constData(), frames, layout, channel, target.data());
    }
}

/// The header of the whole, and of each of its beginnings, as `partHeader` finds it.
template <class PartHeader>
void checkFile(const QByteArray &bytes, const SHeader &whole, PartHeader partHeader)
{
    checkHeader(whole, bytes);
    if (whole.layout)
        convertAll(bytes, *whole.layout);
    for (int size = 0; size < std::min(int(bytes.size()), 200); ++size) {
        const QByteArray front = bytes.left(size);
        const SHeader part = partHeader(front);
        checkHeader(part, front);
        if (part.layout && !whole.layout)
            fail("header", "known from a part but not from the whole");
        if (!part.layout && part.needed > 0 && part.needed <= size)
            fail("header", "asks for what it has");
    }
}
