// SPDX-License-Identifier: MIT
import QtQuick 2.15

// A word that does something when it's clicked, tapped, or reached by Tab and pressed; a switch if it can be checked.
Rectangle {
    id: button

    property string text
    /// The key that does the same, for who waits with the pointer over it.
    property string key
    property QtObject theme
    property bool checkable: false
    property bool checked: false

    signal clicked()

    Accessible.checkable: checkable
    Accessible.checked: checked
    Accessible.description: key
    Accessible.focusable: true
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Accessible.role: checkable ? Accessible.CheckBox : Accessible.Button
    Keys.onReturnPressed: (event) => clicked()
    Keys.onSpacePressed: (event) => clicked()
    activeFocusOnTab: true
    border.color: activeFocus ? theme.accentColor : "transparent"
    color: {
        const accent = theme.accentColor;
        return checked ? Qt.rgba(accent.r, accent.g, accent.b, 0.25) : hover.hovered ? theme.gridColor : "transparent";
    }
    implicitHeight: label.implicitHeight + 10
    implicitWidth: label.implicitWidth + 16
    radius: 4

    Text {
        id: label

        anchors.centerIn: parent
        color: button.theme.labelTextColor
        font: button.theme.font
        renderType: Text.NativeRendering
        text: button.text
        textFormat: Text.PlainText
    }

    HoverHandler {
        id: hover
    }

    TapHandler {
        onTapped: button.clicked()
    }

}
