// SPDX-License-Identifier: MIT
// Ten million samples. The decimator keeps them at every resolution and hands the chart the one that fits its pixels:
// turn the wheel to zoom, down to the single sample.
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

        readonly property int samples: 10000000

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
        onWheel: (wheel) => {
            const zoom = chart.zoomRect;
            const wanted = zoom.width * Math.pow(0.5, wheel.angleDelta.y / 120);
            const width = Math.min(Math.max(wanted, 100), pyramid.samples);
            const x = zoom.x + (zoom.width - width) * wheel.x / chart.width; // what lies under the mouse stays there
            chart.zoomRect = Qt.rect(Math.max(0, Math.min(x, pyramid.samples - width)), zoom.y, width, zoom.height);
        }
    }
}
