// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QVector>

class QImage;
class QQuickItem;
class QQuickWindow;
class SeriesStore;
class Stage;

// Plots of the companion module whose pictures are known: a few wide bars each.

/// Bars of a staircase, 150 by 100 item pixels in the window's top left corner.
QQuickItem *placeKnownPlot(Stage &stage, QQuickWindow &window);
/// Bars of eight values of a store, beside it.
QQuickItem *placePartPlot(Stage &stage, QQuickWindow &window, SeriesStore &store);
/// Whether the staircase is drawn; what is wrong if it isn't.
QStringList knownPlotFaults(const QImage &picture, const QQuickItem &plot);
/// Shows the values from this index on.
void showPart(QQuickItem &plot, qint64 index);
/// Whether these values, NaN for a gap, are drawn, of 0 to 105.
QStringList partPlotFaults(const QImage &picture, const QQuickItem &plot, const QVector<double> &values);
