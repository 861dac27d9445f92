// SPDX-License-Identifier: MIT
#include "viewer/LineOfBars.h"

#include <QVariant>

#include <algorithm>
#include <cmath>

namespace {

constexpr double mostPoints = 65536.0;
/// How many times what is shown a part may be.
constexpr int widest = 6;

/// The series with points between its values, `steps` from one value to the next. For 1 step the series itself.
QVector<double> lineThrough(const QVector<double> &values, int steps)
{
    if (steps == 1)
        return values;
    QVector<double> line;
    line.reserve((values.size() - 1) * steps + 1);
    for (int i = 0; i < values.size() - 1; ++i) {
        line.append(values[i]);
        for (int step = 1; step < steps; ++step) {
            const double share = double(step) / steps;
            line.append((1.0 - share) * values[i] + share * values[i + 1]); // so written, nothing overflows
        }
    }
    line.append(values.last());
    return line;
}

} // namespace

void LineOfBars::setNode(QObject *node)
{
    if (node == m_node)
        return;
    if (m_node)
        m_node->disconnect(this);
    m_node = node;
    if (node) {
        connect(node, SIGNAL(dataChanged()), this, SLOT(update()));
        connect(node, SIGNAL(areaChanged()), this, SLOT(update()));
    }
    restart();
}

void LineOfBars::setChart(QObject *chart)
{
    if (chart == m_chart)
        return;
    if (m_chart)
        m_chart->disconnect(this);
    m_chart = chart;
    if (chart)
        connect(chart, SIGNAL(zoomRectChanged()), this, SLOT(update()));
    restart();
}

void LineOfBars::setPlotter(QObject *plotter)
{
    if (plotter == m_plotter)
        return;
    m_plotter = plotter;
    restart();
}

void LineOfBars::restart()
{
    m_part = {};
    emit changed();
    update();
}

void LineOfBars::update()
{
    if (!m_node)
        return;
    const auto series = m_node->property("data").value<QVector<double>>();
    const QRectF area = m_node->property("area").toRectF();
    if (series.constData() != m_series.constData() || series.size() != m_series.size() || area != m_area)
        m_part = {};
    m_series = series;
    m_area = area;
    if (!m_chart || !m_plotter || series.isEmpty() || !(area.width() > 0.0))
        return;
    const double barWidth = area.width() / series.size();
    const SRange shown = shownRange(barWidth);
    if (shown.first >= shown.end || isServed(shown))
        return;
    const int margin = std::min(shown.end - shown.first, int(series.size()));
    serve({std::max(0, shown.first - margin), std::min(int(series.size()) - margin, shown.end) + margin}, barWidth);
}

LineOfBars::SRange LineOfBars::shownRange(double barWidth) const
{
    const QRectF zoom = m_chart->property("zoomRect").toRectF();
    const auto index = [&](double place) {
        return place > 0.0 ? int(std::min(place, double(m_series.size()))) : 0; // 0 for a NaN, too
    };
    return {index(std::floor((zoom.left() - m_area.left()) / barWidth)),
            index(std::ceil((zoom.right() - m_area.left()) / barWidth))};
}

bool LineOfBars::isServed(const SRange &shown) const
{
    // No wider than that, lest the line's points become more than a pixel wide.
    return shown.first >= m_part.first && shown.end <= m_part.end
        && (m_part.end - m_part.first) / widest <= shown.end - shown.first;
}

int LineOfBars::pointsPerBar() const
{
    const double pixels = m_chart->property("width").toDouble();
    const double points = std::ceil(widest * pixels / (m_part.end - m_part.first));
    return points >= 1.0 ? int(std::min(points, mostPoints)) : 1; // 1 for a NaN, too
}

void LineOfBars::serve(const SRange &part, double barWidth)
{
    m_part = part;
    const QVector<double> bars = m_series.mid(part.first, part.end - part.first);
    const double highest = std::max(0.0, *std::max_element(bars.cbegin(), bars.cend()));
    const int points = pointsPerBar();
    const QVector<double> values = lineThrough(bars, points);
    const double left = m_area.left() + (part.first + 0.5) * barWidth;
    const QRectF area(left, 0.0, values.size() * (barWidth / points), highest);
    // The chart is not to fit itself to the new area and the old values.
    QMetaObject::invokeMethod(m_chart, "lock_update");
    m_plotter->setProperty("plotterArea", area);
    QMetaObject::invokeMethod(m_chart, "unlock_update");
    m_plotter->setProperty("data", QVariant::fromValue(values));
}

QRectF LineOfBars::barAt(double x) const
{
    const double place = std::floor((x - m_area.left()) / m_area.width() * m_series.size());
    if (!(place >= 0.0 && place < m_series.size()))
        return {};
    const double barWidth = m_area.width() / m_series.size();
    return {m_area.left() + place * barWidth, 0.0, barWidth, m_series.at(int(place))};
}
