// SPDX-License-Identifier: MIT
#include "views/items/LineStroke.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr size_t mostPoints = 65'000;
constexpr int sectionSize = 4;   // points of a cut through the line: the seam, the line, the line, the seam
constexpr double sharpest = 0.5; // the cosine of half the angle by which a bend may turn and still be mitred

/// On a grid that is as fine as that of graphics cards, so that a pan by whole pixels moves all by exactly as much.
double onGrid(double place)
{
    return std::nearbyint(place * 256.0) / 256.0;
}

/// To the left of a direction, as one looks along it on the screen.
QPointF normalOf(const QPointF &direction)
{
    return {direction.y(), -direction.x()};
}

class Stroker
{
public:
    explicit Stroker(const SPen &pen)
        : m_seam(pen.isSmooth ? 0.5 : 0.0),
          m_half(std::max(pen.width, pen.isSmooth ? 1.0 : 0.0) / 2.0),
          m_coverage(pen.isSmooth ? float(std::min(pen.width, 1.0)) : 1.0f)
    {
    }

    std::vector<SStrokePart> take() { return std::move(m_parts); }

    void addPiece(const QPointF *points, size_t count)
    {
        m_points.assign(1, points[0]);
        for (size_t i = 1; i < count; ++i) {
            if (points[i] != m_points.back())
                m_points.push_back(points[i]);
        }
        if (m_points.size() == 1)
            addDot(m_points[0]);
        else
            addLine();
    }

private:
    static QPointF directionOf(const QPointF &from, const QPointF &to)
    {
        const QPointF way = to - from;
        return way / std::hypot(way.x(), way.y());
    }

    void addDot(const QPointF &point)
    {
        const QPointF right(1.0, 0.0);
        begin(point, right);
        end(point, right);
    }

    void addLine()
    {
        QPointF direction = directionOf(m_points[0], m_points[1]);
        begin(m_points[0], direction);
        for (size_t i = 1; i + 1 < m_points.size(); ++i) {
            const QPointF next = directionOf(m_points[i], m_points[i + 1]);
            bend(m_points[i], direction, next);
            direction = next;
        }
        end(m_points.back(), direction);
    }

    void begin(const QPointF &point, const QPointF &direction)
    {
        if (m_parts.empty() || m_parts.back().points.size() > mostPoints)
            m_parts.emplace_back();
        m_isJoined = false;
        addSection(point - direction * (m_half + m_seam), normalOf(direction), 0.0f);
        addSection(point - direction * (m_half - m_seam), normalOf(direction), m_coverage);
    }

    void end(const QPointF &point, const QPointF &direction)
    {
        addSection(point + direction * (m_half - m_seam), normalOf(direction), m_coverage);
        addSection(point + direction * (m_half + m_seam), normalOf(direction), 0.0f);
    }

    void bend(const QPointF &point, const QPointF &before, const QPointF &after)
    {
        const QPointF sum = normalOf(before) + normalOf(after);
        const double length = std::hypot(sum.x(), sum.y()); // twice the cosine of half the angle
        if (length < 2.0 * sharpest || m_parts.back().points.size() > mostPoints) {
            end(point, before);
            begin(point, after);
        } else {
            addSection(point, sum * (2.0 / (length * length)), m_coverage);
        }
    }

    /// A cut through the line at `point`; `across` is as long as the cut is wider than the line.
    void addSection(const QPointF &point, const QPointF &across, float coverage)
    {
        SStrokePart &part = m_parts.back();
        const auto first = quint16(part.points.size());
        const double outer = m_half + m_seam;
        const double inner = m_half - m_seam;
        addPoint(part, point + across * outer, m_seam > 0.0 ? 0.0f : coverage);
        addPoint(part, point + across * inner, coverage);
        addPoint(part, point - across * inner, coverage);
        addPoint(part, point - across * outer, m_seam > 0.0 ? 0.0f : coverage);
        if (m_isJoined)
            joinSections(part, first);
        m_isJoined = true;
    }

    static void addPoint(SStrokePart &part, const QPointF &point, float coverage)
    {
        part.points.push_back({float(onGrid(point.x())), float(onGrid(point.y())), coverage});
    }

    static void joinSections(SStrokePart &part, quint16 second)
    {
        const auto first = quint16(second - sectionSize);
        for (int band = 0; band + 1 < sectionSize; ++band) {
            const auto a = quint16(first + band);
            const auto b = quint16(second + band);
            part.corners.insert(part.corners.end(), {a, b, quint16(a + 1), quint16(a + 1), b, quint16(b + 1)});
        }
    }

    const double m_seam;
    const double m_half;
    const float m_coverage;
    std::vector<QPointF> m_points;
    std::vector<SStrokePart> m_parts;
    bool m_isJoined = false;
};

} // namespace

std::vector<SStrokePart> strokeOf(const LinePath &path, const SPen &pen)
{
    Stroker stroker(pen);
    size_t from = 0;
    for (const size_t end : path.ends) {
        stroker.addPiece(path.points.data() + from, end - from);
        from = end;
    }
    return stroker.take();
}
