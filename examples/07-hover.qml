// SPDX-License-Identifier: MIT
// What lies under the mouse: the decorator asks the plotters and publishes their answers, a tooltip shows them.
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0
import "qrc:/qml"

Window {
    width: 640
    height: 360
    visible: true
    color: "#0b1016"

    ChartArea {
        id: chart

        anchors.fill: parent
        adaptChartHeight: false
        onChartRectChanged: resetZoomView()
    }

    BarPlotter {
        id: bars

        name: "events"
        chartArea: chart
        color: "#8f7dff"
    }

    BarDecorator {
        id: hovered

        chartArea: chart
        active: true
        plotters: [bars]
        mouseX: mouse.mouseX
        mouseY: mouse.mouseY
    }

    Filter1D {
        area: Qt.rect(0, 0, 32, 1)
        data: Array.from({length: 32}, (_, i) => 4 + 60 * Math.exp(-Math.pow((i - 14) / 6, 2)) + (i * 5) % 7)
        Component.onCompleted: addPlotter(bars)
    }

    MouseArea {
        id: mouse

        anchors.fill: parent
        hoverEnabled: true
    }

    ChartTooltip {
        readonly property var bar: hovered.infoMap.length > 0 ? hovered.infoMap[0] : null

        x: mouse.mouseX - width / 2
        y: mouse.mouseY - height
        visible: bar !== null

        Text {
            width: parent.width
            height: 0.8 * parent.height
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            text: parent.bar ? parent.bar.rect.height.toFixed(1) + " " + parent.bar.name : ""
        }
    }
}
