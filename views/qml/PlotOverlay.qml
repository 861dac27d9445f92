// SPDX-License-Identifier: MIT
import QtQuick 2.14

// What lies over a plot: the legend, the read-out, what cursors and regions tell, and whether the view follows.
Item {
    id: overlay

    property Item view: null
    property QtObject readout: null
    property QtObject marks: null
    property QtObject leftOut: null
    property QtObject ears: null
    readonly property rect area: view.plotArea

    anchors.fill: parent

    // A screen reader finds the view itself, not this.
    Component.onCompleted: {
        view.Accessible.role = Accessible.Chart;
        view.Accessible.focusable = true;
        view.Accessible.name = Qt.binding(() => overlay.ears.sentence);
        view.Accessible.description = Qt.binding(() => overlay.ears.cursor);
    }

    PlotLegend {
        id: legend

        view: overlay.view
        x: Math.round(overlay.area.x + overlay.area.width - width - 8)
        y: Math.round(overlay.area.y + 8)
    }

    Column {
        x: Math.round(overlay.area.x + 8)
        y: Math.round(overlay.area.y + 8)
        spacing: 6

        Repeater {
            model: overlay.marks.panels

            PlotPanel {
                view: overlay.view
                title: modelData.title
                rows: modelData.rows
                opacity: 0.92
            }
        }
    }

    Text {
        readonly property bool follows: overlay.view.following

        objectName: "followState"
        visible: overlay.view.followMode !== 0
        x: Math.round(overlay.area.x + overlay.area.width - width - 10)
        y: Math.round(overlay.area.y + overlay.area.height - height - 6)
        text: follows ? qsTr("▶ following") : qsTr("❚❚ paused, End resumes")
        textFormat: Text.PlainText
        font: overlay.view.theme.font
        color: overlay.view.theme.accentColor
        renderType: Text.NativeRendering
    }

    PlotPanel {
        objectName: "leftOut"
        visible: title.length > 0
        view: overlay.view
        title: overlay.leftOut.words
        opacity: 0.92
        x: Math.round(overlay.area.x + 8)
        y: Math.round(overlay.area.y + overlay.area.height - height - 8)
    }

    PlotPanel {
        id: readoutPanel

        readonly property point pointer: overlay.readout.position
        readonly property bool isLeft: pointer.x + 16 + width > overlay.width
        readonly property bool isOverLegend: legend.visible && legend.contains(Qt.point(pointer.x - legend.x, pointer.y - legend.y))

        objectName: "readout"
        visible: overlay.view.readoutVisible && overlay.readout.active && !isOverLegend
        view: overlay.view
        title: overlay.readout.title
        rows: overlay.readout.rows
        x: Math.round(Math.max(0, isLeft ? pointer.x - 12 - width : pointer.x + 16))
        y: Math.round(Math.max(0, Math.min(pointer.y + 12, overlay.height - height)))
    }
}
