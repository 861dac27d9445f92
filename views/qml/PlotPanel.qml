// SPDX-License-Identifier: MIT
import QtQuick 2.14

// A title and rows of numbers on a ground of their own: the read-out, cursors, regions. It takes no events.
Rectangle {
    id: panel

    property Item view: null // its theme may go at any time: only the view knows which one it has
    property string title: ""
    property var rows: []

    implicitWidth: content.implicitWidth + 16
    implicitHeight: content.implicitHeight + 10
    radius: 4
    color: panel.view.theme.panelColor
    border.color: panel.view.theme.gridColor

    Column {
        id: content

        x: 8
        y: 5
        spacing: 2

        Text {
            visible: text.length > 0
            text: panel.title
            textFormat: Text.PlainText
            font: panel.view.theme.font
            color: panel.view.theme.panelTextColor
            renderType: Text.NativeRendering
        }

        Repeater {
            model: panel.rows

            Row {
                spacing: 6

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 9
                    height: 9
                    radius: 2
                    visible: modelData.color.a > 0
                    color: modelData.color
                }

                Text {
                    visible: text.length > 0
                    text: modelData.name
                    textFormat: Text.PlainText
                    font: panel.view.theme.font
                    color: panel.view.theme.panelTextColor
                    opacity: 0.85
                    renderType: Text.NativeRendering
                }

                Text {
                    text: modelData.text
                    textFormat: Text.PlainText
                    font: panel.view.theme.font
                    color: panel.view.theme.panelTextColor
                    renderType: Text.NativeRendering
                }
            }
        }
    }
}
