// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <algorithm>
#include <numeric>

/// How many line ends the text holds. Counts in bytes, of which a register holds many.
inline qint64 lineEnds(const char *text, const char *end)
{
    constexpr int width = 32;
    constexpr int mostRounds = 255;
    qint64 sum = 0;
    while (end - text >= width) {
        const int rounds = int(std::min<qptrdiff>((end - text) / width, mostRounds));
        quint8 counts[width] = {};
        for (int round = 0; round < rounds; ++round, text += width) {
            for (int i = 0; i < width; ++i)
                counts[i] = quint8(counts[i] + (text[i] == '\n'));
        }
        sum = std::accumulate(counts, counts + width, sum);
    }
    return sum + std::count(text, end, '\n');
}
