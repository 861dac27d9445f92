// SPDX-License-Identifier: MIT
import QtQuick 2.15

// What is to be said about each file, one line each: how far it has been read, what was guessed, what is wrong. A click
// opens the panel where guesses are changed.
Column {
    id: notice

    property var files: []
    property QtObject theme
    /// What went wrong last; a click takes it away.
    property string said

    signal fileClicked(QtObject file)

    component Line: BarButton {
        property bool isAlarm: false

        Accessible.role: Accessible.AlertMessage
        color: isAlarm ? "#b3261e" : theme.panelColor
        radius: 0
        textColor: isAlarm ? "#ffffff" : theme.panelTextColor
        theme: notice.theme
        visible: text !== ""
        width: notice.width
    }

    Repeater {
        model: notice.files

        Line {
            isAlarm: modelData.problem !== ""
            objectName: "notice"
            text: modelData.told + (modelData.busy && !modelData.live && !isAlarm ? ", Esc cancels" : "")
            onClicked: notice.fileClicked(modelData)
        }
    }

    Line {
        isAlarm: true
        objectName: "said"
        text: notice.said
        onClicked: notice.said = ""
    }
}
