// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    property alias source: source

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

    AreaPlotter {
        id: curve

        chartArea: chart
        color: "#70b388ff"
        borderColor: "#b388ff"
        borderWidth: 2
    }

    Filter1D {
        id: source

        objectName: "source"
        Component.onCompleted: addPlotter(curve)
    }
}
