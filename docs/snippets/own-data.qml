// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    property alias chart: chart

    width: 640
    height: 360
    visible: true
    color: "#10181f"

    ChartArea {
        id: chart

        anchors.fill: parent
        onChartRectChanged: resetZoomView()
    }

    BarPlotter {
        id: bars

        chartArea: chart
    }

    //! [node]
    Filter1D {
        area: Qt.rect(0, 0, 5, 1)
        data: [3, 1, 4, 1, 5]
        Component.onCompleted: addPlotter(bars)
    }
    //! [node]
}
