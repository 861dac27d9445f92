// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>
#include <QtGlobal>

#include <functional>
#include <iterator>
#include <random>
#include <utility>

/// Reproducible chance: decisions made of a stream of words.
class Chance
{
public:
    using Words = std::function<quint32()>;

    /// The same seed makes the same decisions.
    explicit Chance(quint32 seed) : m_next(std::mt19937(seed)) {}
    /// Decisions made by somebody else, a fuzzer for example.
    explicit Chance(Words next) : m_next(std::move(next)) {}

    /// 0 to n - 1.
    int below(int n) { return int(m_next() % quint32(n)); }
    bool oneIn(int n) { return below(n) == 0; }
    double between(double low, double high) { return low + (high - low) * (m_next() / 4294967296.0); }

    template <class List>
    auto pick(const List &list)
    {
        return *(std::begin(list) + below(int(std::size(list))));
    }

    template <class List>
    void shuffle(List &list)
    {
        for (int i = int(std::size(list)) - 1; i > 0; --i)
            std::swap(list[i], list[below(i + 1)]);
    }

    /// `count` values between 0 and 100.
    QVector<double> series(int count)
    {
        QVector<double> values(count);
        for (double &value : values)
            value = between(0.0, 100.0);
        return values;
    }

private:
    Words m_next;
};
