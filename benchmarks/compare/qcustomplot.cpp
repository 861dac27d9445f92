// SPDX-License-Identifier: MIT
#include "benchmarks/compare/WidgetStage.h"

#include <qcustomplot.h>

namespace {

class CustomPlot final : public Contender
{
public:
    QStringList variants(const QString &kind) const override
    {
        if (kind == QLatin1String("bars"))
            return {QString()};
        return {QStringLiteral("adaptive sampling"), QStringLiteral("all points")};
    }

    QWindow *open(const STask &task, const QVector<double> &series) override
    {
        const QColor ink(7, 203, 242);
        m_plot.setBackground(QBrush(Qt::black));
        m_plot.axisRect()->setAutoMargins(QCP::msNone);
        m_plot.axisRect()->setMargins(QMargins());
        for (QCPAxis *axis : {m_plot.xAxis, m_plot.yAxis})
            axis->setVisible(false);
        m_plot.xAxis->grid()->setVisible(false);
        m_plot.yAxis->grid()->setVisible(false);
        if (task.kind == QLatin1String("bars")) {
            m_bars = new QCPBars(m_plot.xAxis, m_plot.yAxis);
            m_bars->setWidth(1.0);
            m_bars->setPen(QPen(ink)); // without a pen, bars narrower than a pixel are not drawn at all
            m_bars->setBrush(ink);
        } else {
            m_graph = m_plot.addGraph();
            m_graph->setPen(QPen(ink));
            m_graph->setAdaptiveSampling(task.variant == QLatin1String("adaptive sampling"));
            if (task.kind == QLatin1String("area"))
                m_graph->setBrush(ink);
        }
        m_count = task.count;
        m_plot.yAxis->setRange(0.0, plotTop);
        setSeries(series);
        setRange(zoomView(0));
        return showAsWindow(m_plot);
    }

    void replace(const QVector<double> &series) override
    {
        setSeries(series);
        m_plot.replot(QCustomPlot::rpImmediateRefresh);
    }

    void zoom(const SView &view) override
    {
        setRange(view);
        m_plot.replot(QCustomPlot::rpImmediateRefresh);
    }

private:
    /// Straight into the containers that the library draws from: its fastest way.
    void setSeries(const QVector<double> &series)
    {
        if (m_bars)
            m_bars->data()->set(points<QCPBarsData>(series), true);
        else
            m_graph->data()->set(points<QCPGraphData>(series), true);
    }

    template <class Point>
    static QVector<Point> points(const QVector<double> &series)
    {
        QVector<Point> result(series.size());
        for (int i = 0; i < series.size(); ++i)
            result[i] = Point(i + 0.5, series.at(i));
        return result;
    }

    void setRange(const SView &view) { m_plot.xAxis->setRange(view.from * m_count, view.to * m_count); }

    QCustomPlot m_plot;
    QCPGraph *m_graph = nullptr;
    QCPBars *m_bars = nullptr;
    int m_count = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    WidgetApplication application(argc, argv);
    CustomPlot contender;
    return runContest(contender);
}
