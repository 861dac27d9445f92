// SPDX-License-Identifier: MIT
// Two charts that show the same stretch: what is zoomed or dragged in one follows in the other.
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    width: 640
    height: 360
    visible: true
    color: "#0b1016"

    LinkedChart {
        id: upper

        other: lower
        anchors.top: parent.top
    }

    LinkedChart {
        id: lower

        other: upper
        anchors.bottom: parent.bottom
    }

    BarPlotter {
        id: counts

        chartArea: upper
        color: "#ff8a3d"
    }

    BarPlotter {
        id: sums

        chartArea: lower
        color: "#3da5ff"
    }

    Filter1D {
        area: Qt.rect(0, 0, 500, 1)
        data: Array.from({length: 500}, (_, i) => 5 + 40 * Math.pow(Math.sin(i / 50), 8) + (i * 13) % 11)
        Component.onCompleted: addPlotter(counts)
    }

    Filter1D {
        area: Qt.rect(0, 0, 500, 1)
        data: Array.from({length: 500}, (_, i) => 200 + i * 3 + 150 * Math.sin(i / 25))
        Component.onCompleted: addPlotter(sums)
    }

    component LinkedChart: ChartArea {
        property ChartArea other

        updateIntervalMs: 0 // the last movement of the mouse counts, too
        width: parent.width
        height: parent.height / 2 - 4
        onChartRectChanged: resetZoomView()
        onZoomRectChanged: {
            if (other.zoomRect.x !== zoomRect.x || other.zoomRect.width !== zoomRect.width)
                other.zoomRect = Qt.rect(zoomRect.x, other.zoomRect.y, zoomRect.width, other.zoomRect.height);
        }

        MouseArea {
            property real last: 0

            function show(left, width) {
                width = Math.min(width, chartRect.width);
                left = Math.max(chartRect.left, Math.min(left, chartRect.right - width));
                zoomRect = Qt.rect(left, zoomRect.y, width, zoomRect.height);
            }

            /// Shows `factor` times as much; what lies under the mouse stays there.
            function zoom(pixel, factor) {
                show(zoomRect.left + pixel / width * zoomRect.width * (1 - factor), zoomRect.width * factor);
            }

            anchors.fill: parent
            onPressed: (mouse) => last = mouse.x
            onPositionChanged: (mouse) => {
                show(zoomRect.left + (last - mouse.x) / width * zoomRect.width, zoomRect.width);
                last = mouse.x;
            }
            onWheel: (wheel) => zoom(wheel.x, Math.pow(0.8, wheel.angleDelta.y / 120))
        }
    }
}
