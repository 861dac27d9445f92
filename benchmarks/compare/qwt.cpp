// SPDX-License-Identifier: MIT
#include "benchmarks/compare/WidgetStage.h"

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_histogram.h>
#include <qwt_plot_layout.h>

#include <QFrame>

namespace {

/// The series as points, which the curve reads one by one: no copy.
class CurveSeries final : public QwtSeriesData<QPointF>
{
public:
    explicit CurveSeries(const QVector<double> &series) : m_series(series) {}
    size_t size() const override { return size_t(m_series.size()); }
    QPointF sample(size_t i) const override { return {double(i) + 0.5, m_series.at(int(i))}; }
    QRectF boundingRect() const override { return {0.0, 0.0, double(m_series.size()), plotTop}; }

private:
    QVector<double> m_series;
};

/// The series as intervals with a value.
class HistogramSeries final : public QwtSeriesData<QwtIntervalSample>
{
public:
    explicit HistogramSeries(const QVector<double> &series) : m_series(series) {}
    size_t size() const override { return size_t(m_series.size()); }
    QwtIntervalSample sample(size_t i) const override { return {m_series.at(int(i)), double(i), double(i + 1)}; }
    QRectF boundingRect() const override { return {0.0, 0.0, double(m_series.size()), plotTop}; }

private:
    QVector<double> m_series;
};

class Qwt final : public Contender
{
public:
    QStringList variants(const QString &) const override { return {QString()}; }

    QWindow *open(const STask &task, const QVector<double> &series) override
    {
        const QColor ink(7, 203, 242);
        m_count = task.count;
        setUpPlot();
        if (task.kind == QLatin1String("bars")) {
            m_histogram = new QwtPlotHistogram;
            m_histogram->setPen(QPen(Qt::NoPen));
            m_histogram->setBrush(ink);
            m_histogram->attach(&m_plot);
        } else {
            m_curve = new QwtPlotCurve;
            m_curve->setPen(QPen(ink, 1.0));
            m_curve->setPaintAttribute(QwtPlotCurve::FilterPoints);
            if (task.kind == QLatin1String("area"))
                m_curve->setBrush(ink);
            m_curve->attach(&m_plot);
        }
        setSeries(series);
        setRange(zoomView(0));
        m_plot.replot();
        return showAsWindow(m_plot);
    }

    void replace(const QVector<double> &series) override
    {
        setSeries(series);
        m_plot.replot();
    }

    void zoom(const SView &view) override
    {
        setRange(view);
        m_plot.replot();
    }

private:
    void setUpPlot()
    {
        m_plot.setCanvasBackground(Qt::black);
        static_cast<QFrame *>(m_plot.canvas())->setFrameStyle(QFrame::NoFrame);
        m_plot.enableAxis(QwtPlot::xBottom, false);
        m_plot.enableAxis(QwtPlot::yLeft, false);
        m_plot.setContentsMargins(0, 0, 0, 0);
        m_plot.plotLayout()->setCanvasMargin(0);
        m_plot.plotLayout()->setAlignCanvasToScales(true);
        m_plot.setAxisScale(QwtPlot::yLeft, 0.0, plotTop);
    }

    void setSeries(const QVector<double> &series)
    {
        if (m_histogram)
            m_histogram->setData(new HistogramSeries(series));
        else
            m_curve->setData(new CurveSeries(series));
    }

    void setRange(const SView &view) { m_plot.setAxisScale(QwtPlot::xBottom, view.from * m_count, view.to * m_count); }

    QwtPlot m_plot;
    QwtPlotCurve *m_curve = nullptr;
    QwtPlotHistogram *m_histogram = nullptr;
    int m_count = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    WidgetApplication application(argc, argv);
    Qwt contender;
    return runContest(contender);
}
