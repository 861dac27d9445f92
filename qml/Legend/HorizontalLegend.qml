// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Controls.Material 2.12

/// A legend in rows, centred: as many cells beside each other as fit.
Rectangle {
    id: root

    property var plotterList: []
    /// Whose colour the dialog changes; -1 until a dot is clicked.
    property int currColorSelected: -1
    property color nameColor: Material.color(Material.Grey, Material.Shade700)
    /// Of what stands for a hidden plotter.
    property color hiddenColor: Material.color(Material.Grey, Material.Shade400)

    implicitHeight: grid.contentHeight
    color: Material.background

    GridView {
        id: grid

        model: root.plotterList ? root.plotterList.length : 0
        width: Math.max(1, Math.floor(Math.min(root.width, 125 * count) / 125)) * cellWidth
        height: parent.height
        anchors.horizontalCenter: parent.horizontalCenter
        boundsBehavior: Flickable.StopAtBounds
        cellWidth: Math.max(1, Math.min(125, root.width))
        cellHeight: 30
        clip: true
        interactive: contentHeight > height

        delegate: LegendElement {
            plotter: root.plotterList[index] || null
            nameColor: root.nameColor
            hiddenColor: root.hiddenColor
            width: grid.cellWidth
            height: grid.cellHeight
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

}
