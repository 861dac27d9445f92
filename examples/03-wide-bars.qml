// SPDX-License-Identifier: MIT
// Bars of individual widths, far from the origin: the series holds pairs of (width, value). The bars are thousandths
// wide and begin at ten million, where single precision knows whole numbers only; their edges stay exact.
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    width: 640
    height: 360
    visible: true
    color: "#0b1016"

    ChartArea {
        id: chart

        anchors.fill: parent
        onChartRectChanged: resetZoomView()
    }

    BarPlotterDx {
        id: bars

        chartArea: chart
        color: "#f2b807"
    }

    Filter1D {
        area: Qt.rect(1e7, 0, 1, 1)
        Component.onCompleted: {
            const pairs = [];
            for (let i = 0; i < 24; ++i)
                pairs.push(0.001 * (1 + i % 6), 10 + (i * 7) % 24);
            addPlotter(bars);
            data = pairs;
        }
    }
}
