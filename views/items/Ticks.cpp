// SPDX-License-Identifier: MIT
#include "views/items/Ticks.h"

#include <algorithm>
#include <limits>

namespace {

// Keeps the choice of a step off the rounding of a pan where a round range lies exactly on the border of two steps.
constexpr double tolerance = 1e-6;
// On a log scale: how far apart minor ticks are at least.
constexpr double minorPixels = 3.0;

/// m * 10^exponent, rounded once: 3 * 10^-1 is 0.3, not 0.30000000000000004.
double decimal(double m, int exponent)
{
    return exponent < 0 ? m / std::pow(10.0, -exponent) : m * std::pow(10.0, exponent);
}

/// A step as digit * 10^exponent, so that its multiples can be rounded once.
struct SStep
{
    double digits = 0.0;
    int exponent = 0;

    double value() const { return decimal(digits, exponent); }
    double multiple(double k) const { return decimal(k * digits, exponent); }
};

SStep decimalStep(double least)
{
    if (!(least > 0.0) || !std::isfinite(least))
        return {};
    const double wanted = least * (1.0 - tolerance);
    const int exponent = int(std::floor(std::log10(wanted)));
    for (const double digits : {1.0, 2.0, 5.0}) {
        if (decimal(digits, exponent) >= wanted)
            return {digits, exponent};
    }
    return {1.0, exponent + 1};
}

/// Two neighbours must differ in double, however far out they lie.
double leastStep(const AxisMapping &mapping, double pixels)
{
    const double farthest = std::max(std::abs(mapping.from), std::abs(mapping.to));
    return std::max(std::abs(pixels / mapping.pixelsPerUnit()),
                    farthest * 4.0 * std::numeric_limits<double>::epsilon());
}

SStep chosenStep(const AxisMapping &mapping, const STickWish &wish)
{
    const double least = leastStep(mapping, wish.pixels);
    if (!(wish.interval > 0.0) || !std::isfinite(wish.interval))
        return decimalStep(least);
    const double times = std::max(1.0, roundStep(least / wish.interval));
    return {wish.interval * times, 0};
}

QVector<double> multiplesWithin(const SStep &step, double from, double to)
{
    QVector<double> found;
    // A tick on the very edge belongs to the axis although division may put it a digit outside.
    const double slack = 1e-9;
    const double first = std::ceil(from / step.value() - slack);
    const double last = std::floor(to / step.value() + slack);
    if (!std::isfinite(first) || !(last - first < maximalTickCount))
        return found;
    for (double k = first; k <= last; ++k)
        found.append(k == 0.0 ? 0.0 : step.multiple(k)); // never -0
    return found;
}

/// The ascending `ticks` without those that are major.
QVector<double> without(const QVector<double> &ticks, const QVector<double> &majors, double least)
{
    QVector<double> kept;
    const double *major = majors.cbegin();
    for (const double tick : ticks) {
        while (major != majors.cend() && *major < tick - least)
            ++major;
        if (major == majors.cend() || *major > tick + least)
            kept.append(tick);
    }
    return kept;
}

/// One part of a decade, from..to times a power of ten, on which the same step holds.
struct SDecadePart
{
    double from;
    double to;
};
constexpr SDecadePart decadeParts[] = {{1.0, 2.0}, {2.0, 5.0}, {5.0, 10.0}};

class LogTicks
{
public:
    LogTicks(const AxisMapping &mapping, const STickWish &wish)
        : m_low(std::min(mapping.from, mapping.to)),
          m_high(std::max(mapping.from, mapping.to)),
          m_wish(wish),
          m_pixelsPerDecade(std::abs(mapping.pixelsPerUnit())),
          m_firstDecade(int(std::floor(std::log10(m_low)))),
          m_lastDecade(int(std::floor(std::log10(m_high))))
    {
    }

    STicks made()
    {
        if (m_pixelsPerDecade * std::log10(2.0) < m_wish.pixels)
            addPowers();
        else
            addSteps();
        addWholeMultiples();
        return m_ticks;
    }

private:
    void add(QVector<double> &ticks, double value) const
    {
        const double slack = 1e-12;
        if (value >= m_low * (1.0 - slack) && value <= m_high * (1.0 + slack) && ticks.size() < maximalTickCount)
            ticks.append(value);
    }

    void addPowers()
    {
        const int stride = int(std::max(1.0, std::ceil(m_wish.pixels / m_pixelsPerDecade - tolerance)));
        const int first = int(std::floor(double(m_firstDecade) / stride)) * stride;
        for (int decade = first; decade <= m_lastDecade + 1; decade += stride)
            add(m_ticks.major, decimal(1.0, decade));
    }

    void addSteps()
    {
        for (int decade = m_firstDecade; decade <= m_lastDecade + 1; ++decade) {
            for (const SDecadePart &part : decadeParts)
                addSteps(part, decade);
        }
    }

    /// The step of a part is what its upper end, where values are closest, has room for. It divides the part, so it
    /// starts anew.
    void addSteps(const SDecadePart &part, int decade)
    {
        const double length = part.to - part.from;
        const double valuesPerPixel = part.to * std::log(10.0) / m_pixelsPerDecade;
        SStep step = decimalStep(std::max(m_wish.pixels * valuesPerPixel, part.to * 1e-14));
        if (step.value() > length * 0.5) {
            add(m_ticks.major, decimal(part.from, decade));
            return;
        }
        if (std::abs(std::remainder(length, step.value())) > 1e-9)
            step = {length, 0};
        const SStep inDecade{step.digits, step.exponent + decade};
        const double from = std::max(decimal(part.from, decade), m_low);
        const double to = std::min(decimal(part.to, decade), m_high);
        for (const double tick : from <= to ? multiplesWithin(inDecade, from, to) : QVector<double>()) {
            if (tick < decimal(part.to, decade) * (1.0 - 1e-12)) // that one is the next part's
                add(m_ticks.major, tick);
        }
    }

    void addWholeMultiples()
    {
        if (m_pixelsPerDecade * std::log10(10.0 / 9.0) < minorPixels)
            return;
        QVector<double> wholes;
        for (int decade = m_firstDecade; decade <= m_lastDecade; ++decade) {
            for (double digit = 1.0; digit < 10.0; ++digit)
                add(wholes, decimal(digit, decade));
        }
        m_ticks.minor = without(wholes, m_ticks.major, m_low * 1e-9);
    }

    const double m_low;
    const double m_high;
    const STickWish m_wish;
    const double m_pixelsPerDecade;
    const int m_firstDecade;
    const int m_lastDecade;
    STicks m_ticks;
};

} // namespace

double roundStep(double least)
{
    return decimalStep(least).value();
}

STicks linearTicks(const AxisMapping &mapping, const STickWish &wish)
{
    STicks ticks;
    if (!mapping.isValid() || !(wish.pixels > 0.0))
        return ticks;
    const double low = std::min(mapping.from, mapping.to);
    const double high = std::max(mapping.from, mapping.to);
    const SStep step = chosenStep(mapping, wish);
    ticks.step = step.value();
    if (!(ticks.step > 0.0))
        return ticks;
    ticks.major = multiplesWithin(step, low, high);
    if (wish.subTicks > 0) {
        const int parts = std::min(wish.subTicks, 100) + 1;
        const double fine = ticks.step / parts;
        ticks.minor = without(multiplesWithin({fine, 0}, low, high), ticks.major, fine * 0.25);
    }
    return ticks;
}

STicks logTicks(const AxisMapping &mapping, const STickWish &wish)
{
    if (!mapping.isValid() || !mapping.log || !(wish.pixels > 0.0))
        return {};
    return LogTicks(mapping, wish).made();
}
