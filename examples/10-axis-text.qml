// SPDX-License-Identifier: MIT
// Axes with labels of your own: days along the bottom, money at the side.
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0
import "qrc:/qml"

Window {
    width: 640
    height: 360
    visible: true
    color: "#121212"

    ChartArea {
        id: chart

        anchors.fill: parent
        anchors.leftMargin: 70
        anchors.bottomMargin: 36
        anchors.topMargin: 12
        anchors.rightMargin: 16
        onChartRectChanged: resetZoomView()
    }

    LinearXAxis {
        anchors.left: chart.left
        anchors.right: chart.right
        anchors.top: chart.bottom
        axisTextColor: "#c0c0c0"
        axisTextFunc: (day) => new Date(2026, 0, 1 + day).toLocaleDateString(Qt.locale("en_GB"), "d MMM")
        rectArea: chart.zoomRect
    }

    LinearYAxis {
        anchors.fill: chart
        axisTextColor: "#c0c0c0"
        axisLineColor: "#303030"
        axisTextFunc: (value) => value.toLocaleString(Qt.locale("en_GB"), "f", 0) + " €"
        rectArea: chart.zoomRect
    }

    AreaPlotter {
        id: takings

        chartArea: chart
        color: "#6026c6da"
        borderColor: "#26c6da"
        borderWidth: 2
    }

    Filter1D {
        area: Qt.rect(0, 0, 365, 1)
        data: Array.from({length: 365}, (_, day) => {
            const week = day * 2 * Math.PI / 7;
            return 900 + 500 * Math.sin(day / 58) + 120 * Math.sin(week);
        })
        Component.onCompleted: addPlotter(takings)
    }
}
