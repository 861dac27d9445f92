// SPDX-License-Identifier: MIT
#include "benchmarks/compare/WidgetStage.h"

#include <QAreaSeries>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QGraphicsLayout>
#include <QLegend>
#include <QLineSeries>
#include <QValueAxis>

QT_CHARTS_USE_NAMESPACE

namespace {

class Charts final : public Contender
{
public:
    /// OpenGL is there for lines only.
    QStringList variants(const QString &kind) const override
    {
        if (kind == QLatin1String("line"))
            return {QString(), QStringLiteral("OpenGL")};
        return {QString()};
    }

    QWindow *open(const STask &task, const QVector<double> &series) override
    {
        m_count = task.count;
        auto *chart = new QChart;
        chart->legend()->hide();
        chart->setMargins(QMargins());
        chart->layout()->setContentsMargins(0, 0, 0, 0);
        chart->setBackgroundRoundness(0.0);
        chart->setBackgroundBrush(Qt::black);
        addSeries(*chart, task, series);
        m_view.setChart(chart);
        m_view.setFrameStyle(QFrame::NoFrame);
        m_view.setBackgroundBrush(Qt::black);
        setRange(zoomView(0));
        return showAsWindow(m_view);
    }

    void replace(const QVector<double> &series) override { setSeries(series); }
    void zoom(const SView &view) override { setRange(view); }

private:
    void addSeries(QChart &chart, const STask &task, const QVector<double> &series)
    {
        const QColor ink(7, 203, 242);
        QAbstractSeries *added = nullptr;
        if (task.kind == QLatin1String("bars")) {
            auto *bars = new QBarSeries;
            bars->setBarWidth(1.0);
            m_bars = bars;
            added = bars;
        } else {
            m_line = new QLineSeries;
            m_line->setPen(QPen(ink, 1.0));
            m_line->setUseOpenGL(task.variant == QLatin1String("OpenGL"));
            added = m_line;
            if (task.kind == QLatin1String("area")) {
                auto *area = new QAreaSeries(m_line);
                area->setBrush(ink);
                area->setPen(Qt::NoPen);
                added = area;
            }
        }
        setSeries(series);
        chart.addSeries(added);
        m_xAxis = addAxis(chart, *added, Qt::AlignBottom);
        addAxis(chart, *added, Qt::AlignLeft)->setRange(0.0, plotTop);
    }

    static QValueAxis *addAxis(QChart &chart, QAbstractSeries &series, Qt::Alignment alignment)
    {
        auto *axis = new QValueAxis;
        axis->setVisible(false);
        chart.addAxis(axis, alignment);
        series.attachAxis(axis);
        return axis;
    }

    void setSeries(const QVector<double> &series)
    {
        if (m_bars) {
            auto *set = new QBarSet(QString());
            set->setColor(QColor(7, 203, 242));
            set->setBorderColor(Qt::transparent);
            set->append(series.toList());
            m_bars->clear();
            m_bars->append(set);
            return;
        }
        QVector<QPointF> points(series.size());
        for (int i = 0; i < series.size(); ++i)
            points[i] = QPointF(i + 0.5, series.at(i));
        m_line->replace(points);
    }

    /// Bars stand around whole numbers.
    void setRange(const SView &view)
    {
        const double shift = m_bars ? -0.5 : 0.0;
        m_xAxis->setRange(view.from * m_count + shift, view.to * m_count + shift);
    }

    QChartView m_view;
    QBarSeries *m_bars = nullptr;
    QLineSeries *m_line = nullptr;
    QValueAxis *m_xAxis = nullptr;
    int m_count = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    WidgetApplication application(argc, argv);
    Charts contender;
    return runContest(contender);
}
