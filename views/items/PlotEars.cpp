// SPDX-License-Identifier: MIT
#include "views/items/PlotEars.h"

#include "common/Change.h"
#include "views/items/LeftOut.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotMarks.h"
#include "views/items/PlotSeries.h"
#include "views/items/PlotView.h"
#include "views/items/PlotZoom.h"
#include "views/items/SeriesProbe.h"

namespace {

constexpr int pauseMilliseconds = 1000;

QString rangeText(const PlotAxis &axis)
{
    const double length = std::abs(axis.max() - axis.min());
    return PlotEars::tr("%1 to %2")
        .arg(axis.valueText(axis.min(), length * 1e-3), axis.valueText(axis.max(), length * 1e-3));
}

} // namespace

PlotEars::PlotEars(PlotView &view) : m_view(view)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseMilliseconds);
    connect(&m_pause, &QTimer::timeout, this, &PlotEars::tell);
    connect(&view, &PlotView::rangesChanged, this, &PlotEars::listen);
    connect(&view, &PlotView::titleChanged, this, &PlotEars::listen);
    connect(&view, &PlotView::followingChanged, this, &PlotEars::listen);
    connect(&view, &PlotView::seriesListChanged, this, &PlotEars::watchSeries);
    connect(&view, &PlotView::leftOutCountChanged, this, &PlotEars::listen);
    connect(view.marks(), &PlotMarks::panelsChanged, this, &PlotEars::tellCursor);
    tell();
}

void PlotEars::watchSeries()
{
    for (PlotSeries *series : m_view.series()) {
        connect(series, &PlotSeries::dataChanged, this, &PlotEars::listen, Qt::UniqueConnection);
        connect(series, &PlotSeries::visibleChanged, this, &PlotEars::listen, Qt::UniqueConnection);
        connect(series, &PlotSeries::nameChanged, this, &PlotEars::listen, Qt::UniqueConnection);
    }
    listen();
}

void PlotEars::listen()
{
    if (!m_pause.isActive())
        m_pause.start();
}

QString PlotEars::seriesText() const
{
    QStringList texts;
    for (const PlotSeries *series : m_view.series()) {
        const SeriesProbe probe(*series);
        const SExtremes extremes = probe.values().extremes();
        const QString name = series->name().isEmpty() ? tr("a series") : series->name();
        const QString count = QString::number(probe.values().count());
        if (!series->isVisible())
            texts.append(tr("%1, hidden").arg(name));
        else if (extremes.isEmpty())
            texts.append(tr("%1, without values").arg(name));
        else
            texts.append(tr("%1, %2 values from %3 to %4")
                             .arg(name, count, m_view.axisY()->valueText(extremes.lowest, 0.0),
                                  m_view.axisY()->valueText(extremes.highest, 0.0)));
    }
    return texts.isEmpty() ? tr("no series") : texts.join(QStringLiteral("; "));
}

void PlotEars::tell()
{
    const QString title = m_view.title().isEmpty() ? tr("Plot") : m_view.title();
    const QString x = m_view.axisX()->titleText().isEmpty() ? tr("x") : m_view.axisX()->titleText();
    const QString y = m_view.axisY()->titleText().isEmpty() ? tr("y") : m_view.axisY()->titleText();
    QString sentence = tr("%1: %2. Shown: %3 from %4, %5 from %6.")
                           .arg(title, seriesText(), x, rangeText(*m_view.axisX()), y, rangeText(*m_view.axisY()));
    if (m_view.leftOutCount() > 0.0)
        sentence += QLatin1Char(' ') + m_view.leftOut().words() + QLatin1Char('.');
    if (m_view.followMode() != PlotView::FollowNone)
        sentence += QLatin1Char(' ')
            + (m_view.isFollowing() ? tr("It follows the newest values.") : tr("Following is paused."));
    if (change(m_sentence, sentence))
        emit sentenceChanged();
}

void PlotEars::tellCursor()
{
    if (change(m_cursor, m_view.marks()->spoken()))
        emit cursorChanged();
}
