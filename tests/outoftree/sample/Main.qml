// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0
import Sample 1.0
import "qrc:/qml"

Window {
    property alias envelope: envelope

    width: 400
    height: 200
    visible: true
    color: "black"
    ChartArea {
        id: chart
        objectName: "chart"
        anchors.fill: parent
        updateIntervalMs: 0 // every series is drawn: the last one is the one that is looked at
        onChartRectChanged: resetZoomView()
    }
    BarPlotter {
        id: bars
        chartArea: chart
        color: "#ffc400"
    }
    //! [envelope]
    Envelope {
        id: envelope
        area: Qt.rect(0, 0, 400, 1)
        decay: 0.99
        Component.onCompleted: addPlotter(bars)
    }
    //! [envelope]
    Window {
        width: 300
        height: 200
        visible: true
        SPlotQML {
            objectName: "plot"
            anchors.fill: parent
        }
    }
}
