// SPDX-License-Identifier: MIT
// Ten million samples. The decimator keeps them at every resolution and hands the chart the one that fits its pixels:
// turn the wheel to zoom, down to the single sample.
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    readonly property int samples: 10000000

    width: 640
    height: 360
    visible: true
    color: "#0b1016"

    ChartArea {
        id: chart

        anchors.fill: parent
        updateIntervalMs: 0
        onChartRectChanged: resetZoomView()
    }

    BarPlotter {
        id: bars

        chartArea: chart
        color: "#5ad17a"
    }

    DecimatorU64 {
        id: pyramid

        area: Qt.rect(0, 0, samples, 1)
        chartArea: chart
        Component.onCompleted: {
            addPlotter(bars);
            const series = new Array(samples);
            for (let i = 0; i < samples; ++i)
                series[i] = 50 + 30 * Math.sin(i * 1e-6) + 15 * Math.sin(i * 0.02);
            series[7000000] = 120; // a single sample: it is seen at every zoom
            data = series;
        }
    }

    MouseArea {
        anchors.fill: parent
        onWheel: {
            const zoom = chart.zoomRect;
            const width = Math.min(Math.max(zoom.width * Math.pow(0.5, wheel.angleDelta.y / 120), 100), samples);
            const at = zoom.x + zoom.width * wheel.x / chart.width;
            const x = at - width * wheel.x / chart.width;
            chart.zoomRect = Qt.rect(Math.max(0, Math.min(x, samples - width)), zoom.y, width, zoom.height);
        }
    }
}
