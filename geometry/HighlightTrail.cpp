// SPDX-License-Identifier: MIT
#include "geometry/HighlightTrail.h"

namespace {

constexpr float neverFades = 4000000.0f; // beyond every time of day

/// Exact, unlike Qt's own comparison: neighbours far from the origin are not the same.
bool isSameRect(const QRectF &a, const QRectF &b)
{
    return a.x() == b.x() && a.y() == b.y() && a.width() == b.width() && a.height() == b.height();
}

/// The newest is stamped ahead of every clock until it is released.
SHighlight newest(const QRectF &rect, const QTime &now)
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

HighlightTrail::HighlightTrail()
    : m_highlights{newest(QRectF(), QTime::currentTime())},
      m_fadeTimes(cornersPerHighlight, neverFades)
{
}

bool HighlightTrail::push(const QRectF &rect, const QTime &now)
{
    if (isSameRect(m_highlights.first().rect, rect))
        return false;
    m_highlights.first().stamp = now;
    m_highlights.prepend(newest(rect, now));
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
