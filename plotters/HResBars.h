// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/BarEdges.h"
#include "geometry/VertexRecords.h"
#include "gl/ElementLayouts.h"

#include <QRectF>
#include <QVector>

/// What a BarPlotterDx is made of. Not in its header, which is installed: programs that link against it need no more
/// than its interface.
struct HResBars
{
    // GUI thread, or render thread while the GUI thread is blocked
    QVector<SHResVertex> vertexArray; ///< four per number, that is twice what the bars use; the rest is zero
    QVector<uint> indexArray;         ///< six per number of a short series; never shrinks
    int indexedNumbers = 0;           ///< of the longest series so far, whether its indices are there or not
    BarEdges edges;                   ///< of the bars to be drawn, from 0
    BarEdges queryEdges;              ///< of the series from somewhere else: what queries made last

    // written by sync_buffers(), read while drawing
    BarEdges shownEdges;
    bool shownLong = false;

    // render thread
    QRectF shownView;
    int drawStart = 0;
    int drawEnd = 0;
    double origin = 0.0; ///< from where the corners of a long series are measured
    ElementStream stream{hresBarLayout()};
};
