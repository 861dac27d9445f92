// SPDX-License-Identifier: MIT
// A filled curve with a border. The fill goes from one colour at the top of the chart to another at its bottom.
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

    AreaPlotter {
        id: curve

        chartArea: chart
        color: "#d0ff5c8a"
        enableGradient: true
        gradientColor: "#303c4cff"
        borderColor: "#ffd0dd"
        borderWidth: 2
    }

    Filter1D {
        area: Qt.rect(0, 0, 10, 1)
        data: Array.from({length: 600}, (_, i) => 3 + 1.6 * Math.sin(i / 40) + Math.sin(i / 13))
        Component.onCompleted: addPlotter(curve)
    }
}
