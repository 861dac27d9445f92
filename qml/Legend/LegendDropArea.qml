// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Controls.Material 2.12

/// An edge to which a dragged legend can be docked: while it is over the edge, a legend of the edge's own direction
/// stands in for it, and a drop replaces it. One legend at a time; it can be dragged out again.
Item {
    id: root

    /// Whether the edge is horizontal.
    property bool hDirection: true
    /// How far the docked legend reaches in from the edge, in pixels; a negative one reaches up or left.
    property real extendLength: 60
    /// How thick the area is that takes drops, in pixels; a negative one lies above or left of the edge.
    property real extendDropArea: 50
    property alias dropArea: edge
    property var plotterList: []

    implicitWidth: hDirection || extendLength < 0 ? 0 : container.width
    implicitHeight: !hDirection || extendLength < 0 ? 0 : container.height

    Item {
        id: container

        /// The legend at this edge, and the dragged item that it stands in for.
        property Item docked: null
        property Item guest: null
        readonly property real depth: docked ? Math.abs(root.extendLength) : 0

        function welcome(item) {
            if (item === docked)
                return true;

            if (!item || docked)
                return false;

            docked = (root.hDirection ? bar : box).createObject(this);
            guest = item;
            guest.opacity = 0;
            return true;
        }

        function farewell() {
            if (guest) {
                docked.destroy();
                guest.opacity = 1;
            }
            guest = null;
            docked = null;
        }

        function keep() {
            if (!guest) {
                docked.x = 0;
                docked.y = 0;
                return ;
            }
            const replaced = guest;
            guest = null;
            try {
                replaced.destroy();
            } catch (error) {
                // What was declared and not created can't be destroyed.
                replaced.visible = false;
            }
        }

        x: root.hDirection ? 0 : Math.min(0, Math.sign(root.extendLength) * depth)
        y: root.hDirection ? Math.min(0, Math.sign(root.extendLength) * depth) : 0
        width: root.hDirection ? root.width : depth
        height: root.hDirection ? depth : root.height
    }

    DropArea {
        id: edge

        x: root.hDirection ? 0 : Math.min(0, root.extendDropArea)
        y: root.hDirection ? Math.min(0, root.extendDropArea) : 0
        width: root.hDirection ? root.width : Math.abs(root.extendDropArea)
        height: root.hDirection ? Math.abs(root.extendDropArea) : root.height
        onEntered: drag.accepted = container.welcome(drag.source)
        onExited: container.farewell()
        onDropped: container.keep()
    }

    Component {
        id: bar

        Rectangle {
            id: barRoot

            width: root.width
            height: Math.abs(root.extendLength)
            color: Material.background
            Drag.active: handle.drag.active
            Drag.hotSpot: Qt.point(handle.mouseX, handle.mouseY)

            MouseArea {
                id: handle

                width: 21
                height: parent.height
                cursorShape: pressed ? Qt.ClosedHandCursor : Qt.OpenHandCursor
                drag.target: barRoot
                hoverEnabled: true
                preventStealing: true
                onReleased: barRoot.Drag.drop()

                HandleBar {
                    x: 12
                }

                HandleBar {
                    x: 18
                }

            }

            HorizontalLegend {
                x: 21
                width: parent.width - x
                height: parent.height
                plotterList: root.plotterList
            }

        }

    }

    Component {
        id: box

        VerticalLegend {
            width: Math.abs(root.extendLength)
            height: root.height
            plotterList: root.plotterList
        }

    }

    component HandleBar: Rectangle {
        width: 3
        height: parent.height / 2
        anchors.verticalCenter: parent.verticalCenter
        color: parent.containsMouse ? Material.accent : Material.primary
    }

}
