// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    width: 640
    height: 360

    Row {
        Ground {
            color: "#ffffff"
        }

        Ground {
            color: "#101418"
        }
    }

    component Ground: Rectangle {
        id: ground

        width: 320
        height: 360

        ChartArea {
            id: chart

            anchors.fill: parent
            onChartRectChanged: resetZoomView()
        }

        BarPlotter {
            id: bars

            chartArea: chart
            color: "#1e88e5"
        }

        AreaPlotter {
            id: curve

            chartArea: chart
            color: "#80fb8c00"
            borderColor: "#fb8c00"
            zOrder: 1
        }

        Filter1D {
            area: Qt.rect(0, 0, 80, 1)
            data: Array.from({length: 80}, (_, i) => 10 + 60 * Math.exp(-Math.pow((i - 30) / 9, 2)) + (i * 7) % 9)
            Component.onCompleted: addPlotter(bars)
        }

        Filter1D {
            area: Qt.rect(0, 0, 80, 1)
            data: Array.from({length: 80}, (_, i) => 25 + 20 * Math.sin(i / 8))
            Component.onCompleted: addPlotter(curve)
        }
    }
}
