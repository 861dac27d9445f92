// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

#include <cmath>
#include <limits>
#include <random>

/// Reproducible series of every kind that a filter may meet.
class RandomSeries
{
public:
    explicit RandomSeries(quint64 seed) : m_engine(seed) {}

    /// Uniform in [low, high].
    int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_engine); }
    double real(double low, double high) { return std::uniform_real_distribution<double>(low, high)(m_engine); }
    bool oneIn(int count) { return whole(1, count) == 1; }

    /// Mostly 0 to 7 or near a power of two, at most about 5000.
    int size()
    {
        switch (whole(0, 3)) {
        case 0:
            return whole(0, 7);
        case 1:
            return std::max(0, (1 << whole(1, 12)) + whole(-2, 2));
        case 2:
            return whole(0, 100);
        default:
            return whole(0, 3000);
        }
    }

    /// A series of one of several kinds, chosen at random.
    QVector<double> series(int size)
    {
        const int kind = whole(0, 5);
        QVector<double> values;
        values.reserve(size);
        for (int i = 0; i < size; ++i)
            values.append(value(kind));
        return values;
    }
    QVector<double> series() { return series(size()); }

private:
    double value(int kind)
    {
        switch (kind) {
        case 0:
            return whole(0, 1000); // counts
        case 1:
            return real(-1.0, 1.0);
        case 2:
            return real(-2.0, -1.0);
        case 3:
            return oneIn(2) ? special() : real(-1.0, 1.0);
        case 4:
            return special();
        default:
            return std::ldexp(real(-1.0, 1.0), whole(-1074, 1023));
        }
    }

    double special()
    {
        using Limits = std::numeric_limits<double>;
        const double specials[] = {0.0,
                                   -0.0,
                                   0.0,
                                   -0.0,
                                   1.0,
                                   -1.0,
                                   -2.0,
                                   Limits::quiet_NaN(),
                                   -Limits::quiet_NaN(),
                                   Limits::infinity(),
                                   -Limits::infinity(),
                                   Limits::denorm_min(),
                                   -Limits::denorm_min(),
                                   Limits::min(),
                                   Limits::max(),
                                   Limits::lowest()};
        return specials[whole(0, int(std::size(specials)) - 1)];
    }

    std::mt19937_64 m_engine;
};
