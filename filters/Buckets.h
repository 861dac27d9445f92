// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

// Reduction of a series to fewer values: the largest of each of a row of buckets. Bucket j of `buckets` ends where the
// repeated addition x += count / buckets stands after j + 1 additions, rounded with halves away from zero. The
// additions round too, so the ends are those of this sum, not those of a product.

/// The number of values on the next coarser level: ceil(count / factor).
int coarseSize(int count, double factor);

/// Up to here the error of the repeated addition is too small for more than one bucket to differ from a pair.
constexpr int largestHalvedExactly = 1 << 26;

/// Where halving leaves a bucket of one value: nowhere (the number of buckets) for an even count, else the bucket in
/// which the sum above has fallen behind by a half. For counts up to largestHalvedExactly; costs no pass over them.
int singleBucket(int count);

/// How a level lies on the one below it, at factor 2 and up to largestHalvedExactly: in pairs, but for a bucket of one.
class Halving
{
public:
    explicit Halving(int sourceSize) : m_size(coarseSize(sourceSize, 2.0)), m_single(singleBucket(sourceSize)) {}

    /// The number of buckets.
    int size() const { return m_size; }
    /// The bucket of one value, size() if there is none.
    int single() const { return m_single; }
    /// Where the source of a bucket begins, or that of the last one ends.
    int sourceOf(int bucket) const { return bucket <= m_single ? 2 * bucket : 2 * bucket - 1; }

private:
    int m_size;
    int m_single;
};

/// Appends the largest of each bucket and 0.0 to `maxima`. The last bucket reaches to the end of the values.
void appendBucketMaxima(const double *values, int count, int buckets, QVector<double> &maxima);

/// Writes the first largest value of each bucket, 0.0 for an empty one, and stops when the values are used up: returns
/// the number of buckets written, which is less than `buckets` only where there are two or more buckets per value.
int writeFirstMaxima(const double *values, int count, double *maxima, int buckets);
