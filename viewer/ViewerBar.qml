// SPDX-License-Identifier: MIT
import QtQuick 2.15

// What is done most often, for the mouse; and at the right what is going on, to be read from afar.
Rectangle {
    id: bar

    property QtObject scene
    property Commands commands
    property QtObject theme
    readonly property var shown: ["Menu", "Open…", "Picture…", "Lines", "Areas", "Logarithmic", "Dark", "Overview", "Region",
        "How the file is read…"]

    color: theme.panelColor
    implicitHeight: row.height + 8

    Row {
        id: row

        anchors.verticalCenter: parent.verticalCenter
        spacing: 2
        x: 6

        Repeater {
            model: bar.shown

            BarButton {
                readonly property var command: bar.commands.named(modelData)

                checkable: command.isOn !== undefined
                checked: checkable && command.isOn()
                keys: command.keys[0]
                text: modelData
                theme: bar.theme
                onClicked: {
                    bar.scene.focusPlot();
                    bar.commands.run(command);
                }
            }
        }
    }

    Rectangle {
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        color: bar.scene.state.color || "transparent"
        height: row.height
        radius: 4
        visible: state.text !== ""
        width: state.implicitWidth + 20

        Text {
            id: state

            Accessible.name: text
            Accessible.role: Accessible.AlertMessage
            anchors.centerIn: parent
            color: "#ffffff"
            font.bold: true
            font.pixelSize: 16
            objectName: "state"
            renderType: Text.NativeRendering
            text: bar.scene.state.words || ""
            textFormat: Text.PlainText
        }
    }
}
