// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

// Reduction of a series to fewer values: the largest of each of a row of buckets. Bucket j of `buckets` ends where the
// repeated addition x += count / buckets stands after j + 1 additions, rounded with halves away from zero. The
// additions round too, so the ends are those of this sum, not those of a product.

/// The number of values on the next coarser level: ceil(count / factor).
int coarseSize(int count, double factor);

/// Where halving leaves a bucket of one value: nowhere (the number of buckets) for an even count, else the bucket in
/// which the sum above has fallen behind by a half. For counts up to largestHalvedExactly; costs no pass over them.
int singleBucket(int count);

/// Up to here the error of the repeated addition is too small for more than one bucket to differ from a pair.
constexpr int largestHalvedExactly = 1 << 26;

/// Appends the largest of each bucket and 0.0 to `maxima`. The last bucket reaches to the end of the values.
void appendBucketMaxima(const double *values, int count, int buckets, QVector<double> &maxima);

/// Writes the first largest value of each bucket, 0.0 for an empty one, and stops when the values are used up: returns
/// the number of buckets written, which is less than `buckets` only where there are two or more buckets per value.
int writeFirstMaxima(const double *values, int count, double *maxima, int buckets);
