// SPDX-License-Identifier: MIT
#include "benchmarks/compare/TestSeries.h"

#include <cmath>
#include <cstdint>

namespace {

constexpr double zoomFactor = 0.7;

/// Rings around the middle, each seven tenths of the one outside it.
int ringAt(double position)
{
    const double distance = std::abs(position - 0.5);
    return distance > 0.0 ? int(std::floor(std::log(distance) / std::log(zoomFactor))) : 0;
}

bool isHigh(double position, int phase)
{
    const bool right = position > 0.5;
    return ((ringAt(position) + phase + int(right)) & 1) != 0;
}

/// Numbers in [0, 1) that look like noise and are the same everywhere.
class Noise
{
public:
    explicit Noise(std::uint64_t seed) : m_state(seed) {}
    double next()
    {
        m_state = m_state * 6364136223846793005u + 1442695040888963407u;
        return double(m_state >> 11) / double(std::uint64_t(1) << 53);
    }

private:
    std::uint64_t m_state;
};

} // namespace

QVector<double> testSeries(int count, int phase)
{
    QVector<double> series(count);
    Noise noise(std::uint64_t(phase) + 1);
    for (int i = 0; i < count; ++i) {
        const bool high = isHigh((i + 0.5) / count, phase);
        series[i] = high ? 0.75 + 0.25 * noise.next() : 0.2 * noise.next();
    }
    return series;
}

int zoomSteps(int count)
{
    constexpr double fewest = 57.0; // values in the last view: two or three at each probe
    return 1 + int(std::log(fewest / count) / std::log(zoomFactor));
}

SView zoomView(int step)
{
    const double half = 0.5 * std::pow(zoomFactor, step);
    return {0.5 - half, 0.5 + half};
}

bool leftIsHigh(int step, int phase)
{
    const SView view = zoomView(step);
    const double middle = 0.5 * (probeLeft + probeRight);
    return isHigh(view.from + middle * (view.to - view.from), phase);
}
