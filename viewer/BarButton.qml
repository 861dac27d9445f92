// SPDX-License-Identifier: MIT
import QtQuick 2.15

// Words that do something when they're clicked, tapped, or reached by Tab and pressed; a switch if they can be checked.
Rectangle {
    id: button

    property string text
    property color textColor: theme.labelTextColor
    /// The keys that do the same.
    property string keys
    property bool showsKeys: false
    property QtObject theme
    property bool checkable: false
    property bool checked: false

    signal clicked()

    Accessible.checkable: checkable
    Accessible.checked: checked
    Accessible.description: keys
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

    component Words: Text {
        anchors.verticalCenter: parent.verticalCenter
        color: button.textColor
        font: button.theme.font
        renderType: Text.NativeRendering
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
    }

    Words {
        id: label

        text: button.text
        width: button.width - 16
        x: 8
    }

    Words {
        anchors.right: label.right
        opacity: 0.75
        text: button.keys
        visible: button.showsKeys
    }

    HoverHandler {
        id: hover
    }

    TapHandler {
        onTapped: Qt.callLater(button.clicked) // others under it get the event first: a click may take all of them away
    }

}
