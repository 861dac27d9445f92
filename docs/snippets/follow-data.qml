// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    property alias hovered: hovered
    property alias node: node

    width: 300
    height: 200
    visible: true
    color: "#10181f"

    ChartArea {
        id: chart

        anchors.fill: parent
        adaptAreaToPlotters: false
        adaptChartHeight: false
        chartRect: Qt.rect(0, 0, 2, 5) // the bars reach beyond it: the mouse hits one wherever it is
        zoomRect: chartRect
    }

    BarPlotter {
        id: bars

        chartArea: chart
    }

    MouseArea {
        id: mouse

        anchors.fill: parent
        hoverEnabled: true
    }

    //! [follow]
    BarDecorator {
        id: hovered

        property int deliveries: 0

        chartArea: chart
        active: true
        plotters: [bars]
        mouseX: mouse.mouseX + deliveries % 2 * 1e-6 // another value, if only by a millionth of a pixel
        mouseY: mouse.mouseY
    }

    Connections {
        function onDataChanged() {
            ++hovered.deliveries;
        }

        target: node
    }
    //! [follow]

    Filter1D {
        id: node

        area: Qt.rect(0, 0, 2, 1)
        data: [10, 20]
        Component.onCompleted: addPlotter(bars)
    }

    Timer {
        interval: 300
        running: true
        onTriggered: node.data = [15, 20]
    }
}
