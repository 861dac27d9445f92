// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

/// The fuzzer's bytes as a stream of decisions. Zeros follow when they are used up.
class Bytes
{
public:
    Bytes(const uint8_t *data, size_t size) : m_next(data), m_end(data + size) {}

    bool atEnd() const { return m_next == m_end; }

    uint8_t byte() { return atEnd() ? uint8_t(0) : *m_next++; }
    /// 0 to n - 1, n at most 256.
    int below(int n) { return byte() % n; }

    template <class T>
    T raw()
    {
        T value{};
        const size_t available = std::min(sizeof value, size_t(m_end - m_next));
        std::memcpy(&value, m_next, available);
        m_next += available;
        return value;
    }

    /// Mostly small multiples of an eighth, sometimes a special value, sometimes any bits.
    double number()
    {
        using Limits = std::numeric_limits<double>;
        static const double special[] = {0.0,
                                         -0.0,
                                         Limits::quiet_NaN(),
                                         Limits::infinity(),
                                         -Limits::infinity(),
                                         Limits::max(),
                                         -Limits::max(),
                                         Limits::denorm_min(),
                                         1e308,
                                         1e-300,
                                         0.1,
                                         1.0 / 3.0};
        const int kind = byte();
        if (kind < 200)
            return (kind - 60) / 8.0;
        if (kind < 240)
            return special[kind % std::size(special)];
        return raw<double>();
    }

    QVector<double> series(int longest)
    {
        QVector<double> values(std::min(int(raw<uint16_t>()), longest));
        for (double &value : values)
            value = number();
        return values;
    }

private:
    const uint8_t *m_next;
    const uint8_t *m_end;
};
