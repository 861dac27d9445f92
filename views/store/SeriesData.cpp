// SPDX-License-Identifier: MIT
#include "views/store/SeriesData.h"

#include "views/store/Pins.h"
#include "views/store/SeriesOf.h"

#include <algorithm>
#include <utility>

SeriesData::SeriesData(SampleType type, qint64 begin)
    : m_type(type),
      m_end(begin),
      m_pins(std::make_unique<Pins>(begin))
{
}
SeriesData::~SeriesData() = default;

std::shared_ptr<SeriesData> SeriesData::create(SampleType type, qint64 begin)
{
    const qint64 firstChunk = std::max(begin, qint64(0)) >> chunkBits;
    return withSampleType(type, [&](auto zero) -> std::shared_ptr<SeriesData> {
        using Series = SeriesOf<decltype(zero)>;
        return std::make_shared<Series>(Directory<decltype(zero)>::mostChunks, firstChunk);
    });
}

std::shared_ptr<SeriesData> SeriesData::createOver(SampleType type, const void *values, qint64 count,
                                                   std::shared_ptr<const void> owner)
{
    return withSampleType(type, [&](auto zero) -> std::shared_ptr<SeriesData> {
        return std::make_shared<SeriesOf<decltype(zero)>>(values, count, std::move(owner));
    });
}

namespace {

/// Keeps the chunks of a snapshot, and the series.
class Pin
{
public:
    Pin(std::shared_ptr<const SeriesData> data, Pins &pins) : m_data(std::move(data)), m_pins(pins), m_begin(pins.add())
    {
    }
    ~Pin() { m_pins.remove(m_begin); }
    Pin(const Pin &) = delete;
    Pin &operator=(const Pin &) = delete;

    qint64 begin() const { return m_begin; }

private:
    const std::shared_ptr<const SeriesData> m_data;
    Pins &m_pins; // part of m_data
    const qint64 m_begin;
};

} // namespace

qint64 SeriesData::begin() const
{
    return m_pins->begin();
}

SeriesSnapshot SeriesData::snapshot() const
{
    const std::shared_ptr<const SeriesData> self = shared_from_this();
    const auto pin = std::make_shared<Pin>(self, *m_pins);
    return SeriesSnapshot(self, pin, pin->begin(), end());
}
