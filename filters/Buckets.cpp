// SPDX-License-Identifier: MIT
#include "filters/Buckets.h"

#include "common/Maxima.h"
#include "common/Storage.h"

#include <algorithm>
#include <cmath>

namespace {

/// The ends of the buckets, one after the other.
class BucketEnds
{
public:
    BucketEnds(int count, int buckets) : m_step(double(count) / buckets), m_count(count) {}

    int next()
    {
        m_x += m_step;
        return std::min(rounded(m_x), m_count);
    }

private:
    /// std::round() without its call; x is neither negative nor beyond int.
    static int rounded(double x)
    {
        const int whole = int(x);
        return x - whole >= 0.5 ? whole + 1 : whole;
    }

    double m_step;
    double m_x = 0.0;
    int m_count;
};

/// The sum x of `additions` steps of size count / buckets, which can be moved on by many additions at once.
///
/// Between two powers of two all doubles are multiples of one unit, so an addition rounds to the same whole number of
/// units each time; only the first one after a power of two may round a tie the other way.
class RepeatedSum
{
public:
    RepeatedSum(int count, int buckets) : m_step(double(count) / buckets) {}

    int additions() const { return m_additions; }
    /// Whether x is more than a half behind 2 * additions.
    bool isBehind() const { return m_x < 2.0 * m_additions - 0.5; }

    void add()
    {
        m_x += m_step;
        ++m_additions;
    }

    /// As many additions as are known to be alike, at most until isBehind().
    void leap()
    {
        const double unit = std::ldexp(1.0, std::ilogb(m_x) - 52);
        const double limit = std::ldexp(1.0, std::ilogb(m_x) + 1);
        const double second = (m_x + m_step) + m_step;
        if (!(second < limit))
            return;
        add();
        if (isBehind())
            return;
        const double move = second - m_x; // exact, like every difference below
        const auto units = [unit](double length) { return qint64(length / unit); };
        qint64 alike = (units(limit - m_x) - 1) / units(move);
        if (move < 2.0)
            alike = std::min(alike, units(m_x - (2.0 * m_additions - 0.5)) / units(2.0 - move) + 1);
        m_x += double(alike) * move;
        m_additions += int(alike);
    }

private:
    double m_step;
    double m_x = 0.0;
    int m_additions = 0;
};

} // namespace

int coarseSize(int count, double factor)
{
    return int(std::ceil(count / factor));
}

int singleBucket(int count)
{
    const int buckets = coarseSize(count, 2.0);
    if (count % 2 == 0)
        return buckets;
    RepeatedSum sum(count, buckets);
    while (!sum.isBehind()) {
        sum.add();
        if (!sum.isBehind())
            sum.leap();
    }
    return sum.additions() - 1;
}

void appendBucketMaxima(const double *values, int count, int buckets, QVector<double> &maxima)
{
    BucketEnds ends(count, buckets);
    int start = 0;
    for (int done = 0; done < buckets; done += seriesPortion) {
        const int portion = std::min(seriesPortion, buckets - done);
        double *maximum = extend(maxima, portion);
        for (int j = done; j < done + portion; ++j, ++maximum) {
            const int end = j + 1 < buckets ? ends.next() : count;
            *maximum = maximumFromZero(values + start, end - start);
            start = end;
        }
    }
}

int writeFirstMaxima(const double *values, int count, double *maxima, int buckets)
{
    BucketEnds ends(count, buckets);
    int start = 0;
    int written = 0;
    while (written < buckets && start < count) {
        const int end = ends.next();
        maxima[written++] = firstMaximum(values + start, end - start);
        start = end;
    }
    return written;
}
