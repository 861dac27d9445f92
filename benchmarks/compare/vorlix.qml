// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin 1.0

ChartArea {
    id: chart

    property string kind: "bars"
    property bool pyramid: false
    property bool wide: false
    property bool border: false
    property int count: 0

    function start() {
        const plotter = wide ? wideBars : kind === "bars" ? bars : area;
        const last = pyramid ? decimator : source;
        plotter.color = kind === "line" ? "transparent" : "#07CBF2";
        source.area = Qt.rect(0, 0, count, 1);
        if (pyramid)
            source.addFilter(decimator);
        last.addPlotter(plotter);
        addPlotter(plotter);
        resetZoomView();
    }

    smooth: false // the chart lies on whole pixels: there is nothing to interpolate

    BarPlotter {
        id: bars
    }

    BarPlotterDx {
        id: wideBars
    }

    AreaPlotter {
        id: area
        borderEnable: chart.border || chart.kind === "line"
        borderWidth: 1
    }

    Filter1D {
        id: source
        objectName: "source"
    }

    DecimatorU64 {
        id: decimator
        chartArea: chart
    }
}
