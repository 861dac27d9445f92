// SPDX-License-Identifier: MIT
// A thread that records into a store of the companion module, and may outlive it.
#include "views/store/SeriesStore.h"

#include <cstdio>
#include <thread>

int main()
{
    constexpr qint64 portions = 1000;
    SeriesStore store;
    store.setValueType(SeriesStore::Int16);
    //! [append]
    std::thread recorder([writer = store.writer()]() mutable {
        qint16 samples[256];
        for (qint64 portion = 0; portion < portions; ++portion) {
            for (int i = 0; i < 256; ++i)
                samples[i] = qint16(i - portion % 3);
            writer.append(samples, 256);
        }
    });
    //! [append]
    recorder.join();
    const SeriesSnapshot recorded = store.snapshot();
    const bool isRight = recorded.count() == portions * 256 && recorded.extremes().lowest == -2.0
        && recorded.statisticsIn(0, 256).sum == 255.0 * 128.0;
    std::puts(isRight ? "recorded" : "wrong numbers");
    return isRight ? 0 : 1;
}
