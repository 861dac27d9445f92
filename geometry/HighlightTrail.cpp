// SPDX-License-Identifier: MIT
#include "geometry/HighlightTrail.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float neverFades = 4000000.0f; // beyond every time of day

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool isSameRect(const QRectF &a, const QRectF &b)
{
    return isSame(a.x(), b.x()) && isSame(a.y(), b.y()) && isSame(a.width(), b.width())
        && isSame(a.height(), b.height());
}

/// The newest is stamped ahead of every clock until it is released.
SHighlight newestHighlight(const QRectF &rect, const QTime &now)
{
    constexpr int aheadSeconds = 3600;
    return {rect, now.addSecs(aheadSeconds)};
}

int msecsBetween(const QTime &from, const QTime &to)
{
    constexpr int msecsPerDay = 24 * 60 * 60 * 1000;
    const int msecs = from.msecsTo(to);
    return msecs < 0 ? msecs + msecsPerDay : msecs; // midnight lies between them
}

} // namespace

bool containsRect(const QVector<QRectF> &rects, const QRectF &rect)
{
    return std::any_of(rects.cbegin(), rects.cend(), [&](const QRectF &other) { return isSameRect(other, rect); });
}

HighlightTrail::HighlightTrail()
    : m_highlights{newestHighlight(QRectF(), QTime::currentTime())},
      m_fadeTimes(cornersPerHighlight, neverFades)
{
}

bool HighlightTrail::push(const QRectF &rect, const QTime &now)
{
    if (isSameRect(newest(), rect))
        return false;
    m_highlights.first().stamp = now;
    m_highlights.prepend(newestHighlight(rect, now));
    if (m_highlights.size() > maximum)
        m_highlights.removeLast();
    m_fadeTimes.insert(cornersPerHighlight, cornersPerHighlight, clock(now) + 1.0f);
    m_fadeTimes.resize(maximum * cornersPerHighlight);
    return true;
}

void HighlightTrail::expire(const QTime &now)
{
    while (isFading() && msecsBetween(m_highlights.last().stamp, now) > int(lifeMs))
        m_highlights.removeLast();
}

float HighlightTrail::clock(const QTime &time)
{
    return float(time.msecsSinceStartOfDay()) / lifeMs;
}
