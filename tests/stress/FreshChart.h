// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

class QQuickItem;
class QQuickWindow;
class Stage;

// A chart whose picture is known: four bars in a window of 200 by 105.

/// The text of the chart. Of that size, opaque.
QString knownChart();
/// Puts the chart into a window of any size.
QQuickItem *placeKnownChart(Stage &stage, QQuickWindow &window);
/// Whether the chart stands in the picture's top left corner; what is wrong if it does not.
QStringList pictureFaults(const QImage &picture);
/// Lets the window draw, then looks at its picture.
QStringList windowFaults(Stage &stage, QQuickWindow &window);
/// Draws the chart in a new window, as an application does that starts now.
QStringList freshChartFaults(Stage &stage);
