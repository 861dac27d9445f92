// SPDX-License-Identifier: MIT
#include "views/store/SStatistics.h"

#include <cmath>

namespace {

/// The mean of two groups of values. Neither their sum nor the distance of their means has to be a finite number.
double meanOf(const SStatistics &a, const SStatistics &b, double sum)
{
    const double count = double(a.count + b.count);
    if (std::isfinite(sum))
        return sum / count;
    return a.mean * (double(a.count) / count) + b.mean * (double(b.count) / count);
}

} // namespace

// Chan's formula.
void SStatistics::include(const SStatistics &other)
{
    isPartial |= other.isPartial;
    if (other.count == 0)
        return;
    if (count > 0) {
        const double distance = other.mean - mean;
        m2 += other.m2 + distance * distance * (double(count) * double(other.count) / double(count + other.count));
    } else {
        m2 = other.m2;
    }
    const double joined = sum + other.sum;
    mean = count > 0 ? meanOf(*this, other, joined) : other.mean;
    sum = joined;
    count += other.count;
    positiveCount += other.positiveCount;
}

double SStatistics::deviation() const
{
    return count > 0 ? std::sqrt(m2 / double(count)) : 0.0;
}
