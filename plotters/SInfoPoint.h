// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QString>

class IPlotter;

/// A plotter's answer to a hover query.
struct SInfoPoint
{
    bool valid = false; ///< the query hit an element
    int index = -1;     ///< the element under x, also when the point lies above its value
    double xValue = 0.0;
    double yValue = 0.0;
    QRectF area;                 ///< the element's rectangle in data coordinates
    IPlotter *plotter = nullptr; ///< who answered
    QString label;
    QString text;
};
