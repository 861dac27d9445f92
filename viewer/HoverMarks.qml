// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin 1.0

// What the read-out tells about, marked in the chart: a dot on the line of an area, a lighter bar. With OpenGL ES and
// OpenGL 3 it is the BarDecorator that lightens the bars; with OpenGL 4 it draws nothing, and this takes its place.
Item {
    id: root

    property ChartArea chart
    property MouseArea mouse
    /// What Readout found.
    property var found: []
    property bool asArea: false
    property color barColor
    readonly property bool isOpenGLES: GraphicsInfo.renderableType === GraphicsInfo.SurfaceFormatOpenGLES
    readonly property bool decoratorDraws: isOpenGLES || GraphicsInfo.majorVersion < 4

    function xOf(value) {
        return (value - chart.zoomRect.x) / chart.zoomRect.width * chart.width;
    }

    function yOf(value) {
        return chart.height * (1 - value / chart.zoomRect.height);
    }

    function isHovered(entry) {
        return mouse.mouseY >= yOf(entry.bar.height);
    }

    anchors.fill: chart
    clip: true

    Repeater {
        model: root.asArea || root.decoratorDraws ? [] : root.found.filter(root.isHovered)

        Rectangle {
            color: root.barColor
            height: root.height - y
            width: root.xOf(modelData.bar.right) - x
            x: root.xOf(modelData.bar.left)
            y: root.yOf(modelData.bar.height)
        }

    }

    Repeater {
        model: root.asArea ? root.found : []

        Rectangle {
            border.color: Qt.rgba(modelData.color.r, modelData.color.g, modelData.color.b, 1)
            border.width: 2
            color: "#ffffff"
            height: 8
            radius: 4
            width: 8
            x: root.xOf(modelData.bar.left + modelData.bar.width / 2) - 4
            y: root.yOf(modelData.bar.height) - 4
        }

    }

}
