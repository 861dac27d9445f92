// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Controls.Material 2.12
import QtQuick.Dialogs 1.3

/// One plotter in a legend: a dot in its colour and its name. A click on the name shows or hides the plotter.
Item {
    id: root

    /// By default what the view gives. Null once the plotter is destroyed, which modelData is not.
    property QtObject plotter: modelData
    property alias colorMA: colorArea
    property color nameColor: Material.color(Material.Grey, Material.Shade700)
    /// Of the name and the dot while the plotter is hidden.
    property color hiddenColor: Material.color(Material.Grey, Material.Shade400)
    readonly property bool shown: plotter !== null && plotter.visible

    implicitWidth: 125
    implicitHeight: 30
    visible: plotter !== null

    Row {
        id: row

        x: 12
        width: Math.max(0, parent.width - x)
        height: parent.height
        spacing: 8

        Rectangle {
            id: dot

            width: root.height / 3
            height: width
            radius: width / 2
            color: root.shown ? root.plotter.color : root.hiddenColor
            anchors.verticalCenter: parent.verticalCenter

            MouseArea {
                id: colorArea

                enabled: root.shown
                cursorShape: Qt.PointingHandCursor

                // A dot is small: the gap beside it and the row above and below belong to it too.
                anchors {
                    fill: parent
                    margins: -row.spacing / 2
                }

            }

        }

        Text {
            width: Math.max(0, row.width - dot.width - 2 * row.spacing)
            height: row.height
            color: root.shown ? root.nameColor : root.hiddenColor
            elide: Text.ElideRight
            text: root.plotter ? root.plotter.name : ""
            textFormat: Text.PlainText
            verticalAlignment: Text.AlignVCenter

            MouseArea {
                anchors.fill: parent
                cursorShape: Qt.PointingHandCursor
                onClicked: {
                    if (root.plotter)
                        root.plotter.visible = !root.plotter.visible;

                }
            }

        }

    }

    /// The colour dialog of a legend.
    component ColorPicker: ColorDialog {
        /// What has plotterList and currColorSelected.
        property Item legend
        property QtObject chosen: null

        /// A plotter of the list, or null: what is left of a destroyed one would pass for an object.
        function lookUp(index) {
            chosen = (legend.plotterList || [])[index] || null;
            return chosen;
        }

        function choose(index) {
            legend.currColorSelected = index;
            if (!lookUp(index))
                return ;

            title = chosen.name;
            color = chosen.color;
            open();
        }

        function applyColor() {
            if (lookUp(legend.currColorSelected))
                chosen.color = color;

        }

        showAlphaChannel: true
        onAccepted: {
            applyColor();
            close();
        }
        onRejected: close()
    }

}
