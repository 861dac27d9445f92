// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin.Views 1.0

// What is to be said about each file, one line each: how far it has been read, what was guessed, what is wrong. A click
// opens the panel where guesses are changed.
Column {
    id: notice

    property var files: []
    property QtObject theme
    /// What went wrong last; a click takes it away.
    property string said
    readonly property color alarm: "#b3261e"

    signal fileClicked(QtObject file)
    signal dismissed()

    function speed(bytes) {
        return bytes >= 1e6 ? (bytes / 1e6).toFixed(0) + " MB/s" : (bytes / 1e3).toFixed(0) + " kB/s";
    }

    function describe(file) {
        const reader = file.reader;
        if (file.problem !== "")
            return file.problem;

        const share = reader.progress > 0 ? Math.floor(100 * reader.progress) + " %, " : "";
        const hasNoEnd = reader.follow || file.path === "-";
        if (file.busy && !hasNoEnd)
            return "Reading " + file.name + ": " + share + speed(reader.bytesPerSecond) + ", Esc cancels";

        return file.name + ": " + reader.detected;
    }

    Repeater {
        model: notice.files

        Line {
            isAlarm: modelData.problem !== ""
            objectName: "notice"
            text: notice.describe(modelData)
            onClicked: notice.fileClicked(modelData)
        }
    }

    Line {
        isAlarm: true
        objectName: "said"
        text: notice.said
        onClicked: notice.dismissed()
    }

    component Line: Rectangle {
        id: line

        property alias text: label.text
        property bool isAlarm: false

        signal clicked()

        Accessible.name: text
        Accessible.onPressAction: clicked()
        Accessible.role: Accessible.AlertMessage
        color: isAlarm ? notice.alarm : notice.theme.panelColor
        height: visible ? label.implicitHeight + 6 : 0
        visible: text !== ""
        width: notice.width

        Text {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            color: line.isAlarm ? "#ffffff" : notice.theme.panelTextColor
            font: notice.theme.font
            renderType: Text.NativeRendering
            textFormat: Text.PlainText
            width: line.width - 16
            wrapMode: Text.Wrap
            x: 8
        }

        TapHandler {
            onTapped: line.clicked()
        }
    }
}
