// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Controls.Material 2.15

// What can be changed with a mouse. A window too narrow for all of it lets the rest be scrolled to.
ToolBar {
    id: root

    /// Has smoothDepth, binWidth, unit, asArea, logarithmic and dark.
    property QtObject scene

    signal openClicked()
    signal exportClicked()

    implicitHeight: 44

    Flickable {
        anchors.fill: parent
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        contentHeight: height
        contentWidth: row.width
        interactive: contentWidth > width

        Row {
            id: row

            height: parent.height
            leftPadding: 8
            rightPadding: 8
            spacing: 4

            Action {
                text: "Open…"
                onClicked: root.openClicked()
            }

            Action {
                text: "Export…"
                onClicked: root.exportClicked()
            }

            Switchable {
                option: "asArea"
                text: "Area"
            }

            Switchable {
                option: "logarithmic"
                text: "Log"
            }

            Switchable {
                option: "dark"
                text: "Dark"
            }

            Caption {
                text: "Average over"
            }

            Field {
                objectName: "smoothDepth"
                placeholderText: "1"
                value: root.scene.smoothDepth
                width: 64
                onEditingFinished: root.scene.smoothDepth = Number(text)

                validator: IntValidator {
                    bottom: 1
                    top: 1e+06
                }

            }

            Caption {
                text: "Bin width"
            }

            Field {
                objectName: "binWidth"
                value: root.scene.binWidth
                width: 84
                onEditingFinished: {
                    if (Number(text) > 0)
                        root.scene.binWidth = Number(text);

                }

                validator: RegularExpressionValidator {
                    regularExpression: /[0-9]*\.?[0-9]+([eE][-+]?[0-9]{1,2})?/
                }

            }

            Caption {
                text: "Unit"
            }

            Field {
                maximumLength: 8
                value: root.scene.unit
                width: 64
                onEditingFinished: root.scene.unit = text
            }

        }

    }

    component Action: ToolButton {
        focusPolicy: Qt.NoFocus
        font.capitalization: Font.MixedCase
        height: parent.height
        Material.foreground: "#ffffff"
    }

    component Switchable: Action {
        property string option

        checkable: true
        checked: root.scene[option]
        Material.accent: "#ffe082"
        onToggled: {
            root.scene[option] = checked;
            checked = Qt.binding(() => {
                return root.scene[option];
            });
        }
    }

    component Caption: Label {
        color: "#ffffff"
        height: parent.height
        leftPadding: 8
        verticalAlignment: Text.AlignVCenter
    }

    // What is no value is forgotten when the field is left: it then shows the one that holds.
    component Field: TextField {
        property var value

        function showValue() {
            text = Qt.binding(() => {
                return value;
            });
        }

        anchors.verticalCenter: parent.verticalCenter
        bottomPadding: 8
        color: "#ffffff"
        height: 36
        selectByMouse: true
        Material.accent: "#ffe082"
        text: value
        onActiveFocusChanged: {
            if (!activeFocus)
                Qt.callLater(showValue);

        }
        Keys.onEnterPressed: focus = false
        Keys.onEscapePressed: {
            showValue();
            focus = false;
        }
        Keys.onReturnPressed: focus = false
    }

}
