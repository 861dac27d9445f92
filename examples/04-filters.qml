// SPDX-License-Identifier: MIT
// A tree of data nodes: one source, shown as it is, smoothed, and as the maxima of sixteen parts.
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

    BarPlotter {
        id: maxima

        chartArea: chart
        color: "#1c3a52"
        zOrder: 0
    }

    BarPlotter {
        id: raw

        chartArea: chart
        color: "#2f7fb5"
        zOrder: 1
    }

    AreaPlotter {
        id: smooth

        chartArea: chart
        color: "#00000000"
        borderColor: "#ffc93c"
        borderWidth: 3
        zOrder: 2
    }

    Filter1D {
        id: source

        area: Qt.rect(0, 0, 640, 1)
        Component.onCompleted: {
            addPlotter(raw);
            addFilter(average);
            addFilter(parts);
            data = Array.from({length: 640}, (_, i) => {
                const noise = Math.abs(Math.sin(i * i * 0.37)) * 30;
                return 20 + noise + 40 * Math.exp(-Math.pow((i - 400) / 60, 2));
            });
        }
    }

    MovingAvarangeU64 {
        id: average

        depth: 24
        Component.onCompleted: addPlotter(smooth)
    }

    FixedDecimatorU64 {
        id: parts

        numPoint: 16
        Component.onCompleted: addPlotter(maxima)
    }
}
