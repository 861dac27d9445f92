// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    property alias smooth: smooth
    property alias average: average

    width: 640
    height: 360
    visible: true
    color: "#10181f"

    ChartArea {
        id: chart

        anchors.fill: parent
        onChartRectChanged: resetZoomView()
    }

    //! [tree]
    Filter1D {
        area: Qt.rect(0, 0, 200, 1)
        data: Array.from({length: 200}, (_, i) => 20 + (i * 7) % 13)
        Component.onCompleted: {
            addPlotter(bars);
            addFilter(average);
        }
    }

    MovingAvarangeU64 {
        id: average

        depth: 8
        Component.onCompleted: addPlotter(smooth)
    }

    BarPlotter {
        id: bars

        chartArea: chart
        color: "#2f6f9f"
    }

    AreaPlotter {
        id: smooth

        chartArea: chart
        borderColor: "#ffd54f"
        color: "transparent"
        zOrder: 1
    }
    //! [tree]
}
