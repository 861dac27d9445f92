// SPDX-License-Identifier: MIT
// A thread that records into a store of the companion module, and may outlive it.
#include "views/store/SeriesStore.h"

#include <cstdio>
#include <memory>
#include <thread>
#include <vector>

namespace {

/// A series over memory that somebody else keeps.
bool showsForeignMemory()
{
    SeriesStore store;
    //! [over]
    const auto samples = std::make_shared<std::vector<float>>(1000000, 1.5f);
    store.setData(SeriesData::createOver(SampleType::Float32, samples->data(), qint64(samples->size()), samples));
    //! [over]
    return store.snapshot().statisticsIn(0, 1000000).sum == 1.5e6 && samples.use_count() > 1;
}

/// Samples that are written where they stay.
bool fillsInPlace()
{
    SeriesStore store;
    store.setValueType(SeriesStore::UInt16);
    //! [room]
    const std::shared_ptr<SeriesData> data = store.data();
    const SRoom room = data->room(); // of values, at least one
    auto *const samples = reinterpret_cast<quint16 *>(room.begin);
    for (qint64 i = 0; i < room.count; ++i)
        samples[i] = quint16(i % 1000); // a device would write here
    data->publish(room.count);
    store.announce();
    //! [room]
    return store.snapshot().count() == room.count && store.snapshot().extremes().highest == 999.0;
}

} // namespace

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
        && recorded.statisticsIn(0, 256).sum == 255.0 * 128.0 && showsForeignMemory() && fillsInPlace();
    std::puts(isRight ? "recorded" : "wrong numbers");
    return isRight ? 0 : 1;
}
