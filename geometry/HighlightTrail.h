// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QTime>
#include <QVector>

/// A highlighted rectangle in data coordinates; null if there is none.
struct SHighlight
{
    QRectF rect;
    QTime stamp; ///< when it was released; an hour ahead while it is the newest
};

/// Whether `rect` is among `rects`. Exact, unlike Qt's own comparison: neighbours far from the origin are not the same,
/// and a NaN is the same as a NaN.
bool containsRect(const QVector<QRectF> &rects, const QRectF &rect);

/// The rectangles that were highlighted lately, newest first, and the moments at which each fades in the shader's
/// clock. There is always a newest one, and it stays; the others live for lifeMs after they were released. At most
/// `maximum` are kept. Times of day pass midnight. Needs no event loop: the caller passes the time.
class HighlightTrail
{
public:
    static constexpr int maximum = 10;
    static constexpr float lifeMs = 100.0f; ///< also the unit of the shader's clock
    static constexpr int cornersPerHighlight = 4;

    /// Begins with a null rectangle.
    HighlightTrail();

    const QVector<SHighlight> &highlights() const { return m_highlights; }
    const QRectF &newest() const { return m_highlights.first().rect; }
    /// Per corner: when its highlight has faded, by clock(). In the order of highlights(), longer once one was
    /// released.
    const QVector<float> &fadeTimes() const { return m_fadeTimes; }
    /// Whether anything beside the newest is left.
    bool isFading() const { return m_highlights.size() > 1; }

    /// Makes `rect` the newest and releases the one before. False, and nothing happens, when it is the newest already.
    bool push(const QRectF &rect, const QTime &now);
    /// Drops what has faded.
    void expire(const QTime &now);

    /// The shader's time of day.
    static float clock(const QTime &time);

private:
    QVector<SHighlight> m_highlights;
    QVector<float> m_fadeTimes;
};
