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
            if (!guest)
                return ;

            docked.destroy();
            docked = null;
            guest.opacity = 1;
            guest = null;
        }

        /// Lets the docked legend go once it was dragged off the edge: it then lies among the neighbours of this item
        /// and has its own size. Moving it there calls this again, with nothing docked.
        function watch() {
            if (!docked || guest || !docked.Drag.active || edge.contains(docked.mapToItem(edge, docked.Drag.hotSpot)))
                return ;

            const corner = mapToItem(root.parent, docked.x, docked.y);
            const legend = docked;
            docked = null;
            legend.isFree = true;
            legend.parent = root.parent;
            legend.x = corner.x;
            legend.y = corner.y;
        }

        function keep() {
            if (!guest) {
                docked.x = 0;
                docked.y = 0;
                return ;
            }
            guest.destroy();
            guest = null;
        }

        x: root.hDirection ? 0 : Math.min(0, Math.sign(root.extendLength) * depth)
        y: root.hDirection ? Math.min(0, Math.sign(root.extendLength) * depth) : 0
        width: root.hDirection ? root.width : depth
        height: root.hDirection ? depth : root.height
    }

    Connections {
        function onXChanged() {
            container.watch();
        }

        function onYChanged() {
            container.watch();
        }

        target: container.docked
    }

    DropArea {
        id: edge

        x: root.hDirection ? 0 : Math.min(0, root.extendDropArea)
        y: root.hDirection ? Math.min(0, root.extendDropArea) : 0
        width: root.hDirection ? root.width : Math.abs(root.extendDropArea)
        height: root.hDirection ? Math.abs(root.extendDropArea) : root.height
        onEntered: (drag) => {
            drag.accepted = container.welcome(drag.source);
        }
        onExited: container.farewell()
        onDropped: container.keep()
    }

    Component {
        id: bar

        Rectangle {
            id: barRoot

            /// Whether it was dragged off the edge.
            property bool isFree: false
            readonly property int freeColumns: Math.max(1, Math.min((root.plotterList || []).length, 3))

            implicitWidth: row.x + 125 * freeColumns
            implicitHeight: Math.max(row.implicitHeight, 30)
            width: isFree ? implicitWidth : root.width
            height: isFree ? implicitHeight : Math.abs(root.extendLength)
            z: handle.drag.active ? 1000 : 0
            color: Material.background
            Drag.active: handle.drag.active
            Drag.hotSpot: Qt.point(handle.mouseX, handle.mouseY)

            VerticalLegend.DragHandle {
                id: handle

                width: 21
                height: parent.height
                hoverEnabled: true
                legend: barRoot

                HandleBar {
                    x: 12
                }

                HandleBar {
                    x: 18
                }

            }

            HorizontalLegend {
                id: row

                x: 21
                width: parent.width - x
                height: Math.min(implicitHeight, parent.height)
                anchors.verticalCenter: parent.verticalCenter
                plotterList: root.plotterList
            }

        }

    }

    Component {
        id: box

        VerticalLegend {
            property bool isFree: false

            width: isFree ? implicitWidth : Math.abs(root.extendLength)
            height: isFree ? implicitHeight : root.height
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
