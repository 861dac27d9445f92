// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Controls.Material 2.12

/// A legend as a list under a title bar. Dragging the title bar moves it; drop areas see it.
Rectangle {
    id: root

    property var plotterList: []
    /// Whose colour the dialog changes; -1 until a dot is clicked.
    property int currColorSelected: -1
    property color nameColor: Material.color(Material.Grey, Material.Shade700)
    /// Of what stands for a hidden plotter.
    property color hiddenColor: Material.color(Material.Grey, Material.Shade400)

    implicitWidth: 200
    implicitHeight: titleBar.height + list.contentHeight
    color: Material.background
    z: titleArea.drag.active ? 1000 : 0
    Drag.active: titleArea.drag.active
    Drag.hotSpot: Qt.point(titleArea.mouseX, titleArea.mouseY)

    Rectangle {
        id: titleBar

        width: parent.width
        height: 36
        color: Material.primary

        Text {
            color: Material.toolTextColor
            elide: Text.ElideRight
            text: "Legend"
            verticalAlignment: Text.AlignVCenter

            anchors {
                fill: parent
                leftMargin: 12
                rightMargin: 12
            }

        }

        DragHandle {
            id: titleArea

            anchors.fill: parent
            legend: root
        }

    }

    ListView {
        id: list

        model: root.plotterList ? root.plotterList.length : 0
        width: parent.width
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        interactive: contentHeight > height

        anchors {
            top: titleBar.bottom
            bottom: parent.bottom
        }

        delegate: LegendElement {
            plotter: root.plotterList[index] || null
            nameColor: root.nameColor
            hiddenColor: root.hiddenColor
            width: list.width
            colorMA.onClicked: picker.choose(index)
        }

    }

    // Made at the first click: most legends never need one.
    Loader {
        id: picker

        function choose(index) {
            active = true;
            item.choose(index);
        }

        active: false

        sourceComponent: LegendElement.ColorPicker {
            legend: root
        }

    }

    /// Where a legend can be taken and dragged. Released, it stays within reach.
    component DragHandle: MouseArea {
        id: dragHandle

        property Item legend

        function bringBack(corner) {
            legend.x += Math.min(Math.max(corner.x, 20 - width), legend.parent.width - 20) - corner.x;
            legend.y += Math.min(Math.max(corner.y, 0), legend.parent.height - 20) - corner.y;
        }

        cursorShape: pressed ? Qt.ClosedHandCursor : Qt.OpenHandCursor
        drag.target: legend
        preventStealing: true
        onReleased: {
            if (legend.Drag.drop() === Qt.IgnoreAction)
                bringBack(mapToItem(legend.parent, 0, 0));

        }
    }

}
