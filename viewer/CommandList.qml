// SPDX-License-Identifier: MIT
import QtQuick 2.15

// Everything that can be done, with its keys; found by typing a part of it. It's the menu, the search and the list of
// keys in one.
Rectangle {
    id: list

    property QtObject scene
    property QtObject theme
    readonly property var found: scene.commands.all.filter(isFound)

    signal closed()

    function isFound(command) {
        return (command.words + " " + command.keys.join(" ")).toLowerCase().includes(field.text.toLowerCase());
    }

    function runCurrent() {
        const command = found[rows.currentIndex];
        closed();
        if (command)
            scene.commands.run(command);
    }

    Accessible.name: "All commands"
    Accessible.role: Accessible.PopupMenu
    border.color: theme.gridColor
    color: theme.panelColor
    radius: 6

    TapHandler {
        // what lies under it gets none
    }

    TextInput {
        id: field

        Accessible.name: "Search for a command"
        Accessible.role: Accessible.EditableText
        Keys.onDownPressed: (event) => rows.incrementCurrentIndex()
        Keys.onEscapePressed: (event) => list.closed()
        Keys.onReturnPressed: (event) => list.runCurrent()
        Keys.onEnterPressed: (event) => list.runCurrent()
        Keys.onUpPressed: (event) => rows.decrementCurrentIndex()
        anchors.left: parent.left
        anchors.margins: 12
        anchors.right: parent.right
        anchors.top: parent.top
        color: list.theme.panelTextColor
        focus: true
        font: list.theme.font
        objectName: "search"
        onTextChanged: rows.currentIndex = 0

        Text {
            color: field.color
            font: field.font
            opacity: 0.6
            text: "Type to search; Enter does it, Esc closes"
            visible: field.text === ""
        }
    }

    ListView {
        id: rows

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.margins: 6
        anchors.right: parent.right
        anchors.top: field.bottom
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        model: list.found.length

        delegate: BarButton {
            readonly property var command: list.found[index] || { "words": "", "keys": [] }

            Accessible.role: Accessible.MenuItem
            checked: ListView.isCurrentItem
            keys: command.keys.join("  ")
            showsKeys: true
            text: command.words
            textColor: list.theme.panelTextColor
            theme: list.theme
            width: rows.width
            onClicked: {
                rows.currentIndex = index;
                list.runCurrent();
            }
        }
    }
}
