// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/LineSeries.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotView.h"
#include "views/items/PlotZoom.h"
#include "views/store/SeriesStore.h"

#include <QVector>

/// For the messages of QCOMPARE.
inline char *toString(const SAxisRange &range)
{
    return qstrdup(qPrintable(QStringLiteral("%1 .. %2").arg(range.min, 0, 'g', 15).arg(range.max, 0, 'g', 15)));
}

/// A series with a store of its own that tells the view what comes.
template <class Series = LineSeries>
struct StoredSeries
{
    explicit StoredSeries(PlotView &view, const QVector<double> &values = {})
    {
        series.setProperty("store", QVariant::fromValue(&store));
        add(values);
        view.addSeries(&series);
    }
    /// Appends and waits until the view knows.
    void add(const QVector<double> &values)
    {
        store.append(values.constData(), values.size());
        QCoreApplication::processEvents();
    }

    SeriesStore store;
    Series series;
};

inline QVector<double> ramp(int count, double from = 0.0)
{
    QVector<double> values(count);
    for (int i = 0; i < count; ++i)
        values[i] = from + i;
    return values;
}
