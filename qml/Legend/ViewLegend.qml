// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Controls 2.12
import QtQuick.Controls.Material 2.12

/// A legend that is a small square until the pointer is on it or its pin is checked.
Rectangle {
    id: root

    property real legendWidth: 200
    property real legendHeight: 270
    property real legendTitleHeight: 30
    property real elemHeight: 30
    property var plotterList: []
    /// Whose colour the dialog changes; -1 until a dot is clicked.
    property int currColorSelected: -1
    property color nameColor: Material.color(Material.Grey, Material.Shade700)
    /// Of what stands for a hidden plotter.
    property color hiddenColor: Material.color(Material.Grey, Material.Shade400)
    property alias title: titleText
    property alias list: listView

    clip: true
    color: Material.background
    state: hoverArea.containsMouse || pin.checked ? "full_view" : "minimized"
    states: [
        State {
            name: "minimized"

            PropertyChanges {
                target: root
                implicitWidth: root.legendTitleHeight
                implicitHeight: root.legendTitleHeight
            }

        },
        State {
            name: "full_view"

            PropertyChanges {
                target: root
                implicitWidth: root.legendWidth
                implicitHeight: root.legendHeight
            }

        }
    ]
    transitions: [
        Transition {
            from: "minimized"
            to: "full_view"

            SequentialAnimation {
                NumberAnimation {
                    property: "implicitWidth"
                    duration: 200
                }

                NumberAnimation {
                    property: "implicitHeight"
                    duration: 200
                }

            }

        },
        Transition {
            from: "full_view"
            to: "minimized"

            SequentialAnimation {
                NumberAnimation {
                    property: "implicitHeight"
                    duration: 200
                }

                NumberAnimation {
                    property: "implicitWidth"
                    duration: 200
                }

            }

        }
    ]

    MouseArea {
        id: hoverArea

        acceptedButtons: Qt.NoButton
        anchors.fill: parent
        hoverEnabled: true

        Rectangle {
            id: icon

            width: root.legendTitleHeight
            height: width
            color: "red"
        }

        Rectangle {
            width: root.legendWidth - root.legendTitleHeight
            height: root.legendTitleHeight
            anchors.left: icon.right
            color: Material.primary

            Text {
                id: titleText

                color: Material.toolTextColor
                elide: Text.ElideRight
                text: "Legend"
                verticalAlignment: Text.AlignVCenter

                anchors {
                    left: parent.left
                    leftMargin: 12
                    right: pin.left
                    top: parent.top
                    bottom: parent.bottom
                }

            }

            CheckBox {
                id: pin

                height: parent.height
                anchors.right: parent.right
                Material.theme: titleText.color.hslLightness > 0.5 ? Material.Dark : Material.Light
            }

        }

        ListView {
            id: listView

            model: root.plotterList ? root.plotterList.length : 0
            width: root.legendWidth
            height: root.legendHeight - root.legendTitleHeight
            anchors.top: icon.bottom
            clip: true
            interactive: false

            delegate: LegendElement {
                plotter: root.plotterList[index] || null
                nameColor: root.nameColor
                hiddenColor: root.hiddenColor
                width: listView.width
                height: root.elemHeight
                colorMA.onClicked: picker.choose(index)
            }

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
