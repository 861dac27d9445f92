// SPDX-License-Identifier: MIT
#include "benchmarks/compare/QuickStage.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPolygonF>
#include <QQuickPaintedItem>

#include <algorithm>
#include <cmath>

namespace {

const QColor ink(7, 203, 242);

/// Draws every visible value with QPainter, as one writes it first.
class PaintedSeries final : public QQuickPaintedItem
{
public:
    PaintedSeries(const QString &kind, const QVector<double> &series) : m_kind(kind), m_series(series) {}

    void setSeries(const QVector<double> &series)
    {
        m_series = series;
        update();
    }
    void setShown(const SView &view)
    {
        m_view = view;
        update();
    }

    void paint(QPainter *painter) override
    {
        const double count = m_series.size();
        const int first = std::max(int(std::floor(m_view.from * count)) - 1, 0);
        const int last = std::min(int(std::ceil(m_view.to * count)) + 1, m_series.size());
        const double slot = width() / ((m_view.to - m_view.from) * count);
        const double left = -m_view.from * count * slot;
        if (m_kind == QLatin1String("bars"))
            paintBars(*painter, first, last, left, slot);
        else
            paintLine(*painter, first, last, left + 0.5 * slot, slot);
    }

private:
    double heightOf(double value) const { return height() * value / plotTop; }

    void paintBars(QPainter &painter, int first, int last, double left, double slot)
    {
        for (int i = first; i < last; ++i) {
            const double bar = heightOf(m_series.at(i));
            painter.fillRect(QRectF(left + i * slot, height() - bar, slot, bar), ink);
        }
    }

    void paintLine(QPainter &painter, int first, int last, double left, double slot)
    {
        QPolygonF line;
        line.reserve(last - first + 2);
        for (int i = first; i < last; ++i)
            line.append(QPointF(left + i * slot, height() - heightOf(m_series.at(i))));
        painter.setPen(QPen(ink, 0));
        if (m_kind == QLatin1String("line")) {
            painter.drawPolyline(line);
            return;
        }
        line.append(QPointF(line.last().x(), height()));
        line.append(QPointF(line.first().x(), height()));
        painter.setBrush(ink);
        painter.drawPolygon(line);
    }

    QString m_kind;
    QVector<double> m_series;
    SView m_view;
};

class Painter final : public Contender
{
public:
    QStringList variants(const QString &) const override { return {QString()}; }

    QWindow *open(const STask &task, const QVector<double> &series) override
    {
        m_item = new PaintedSeries(task.kind, series);
        m_stage.open(m_item);
        return &m_stage.view();
    }
    void replace(const QVector<double> &series) override { m_item->setSeries(series); }
    void zoom(const SView &view) override { m_item->setShown(view); }

private:
    QuickStage m_stage;
    PaintedSeries *m_item = nullptr;
};

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    Painter contender;
    return runContest(contender);
}
