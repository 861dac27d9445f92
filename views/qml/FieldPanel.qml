// SPDX-License-Identifier: MIT
import QtQuick 2.14
import VorlixPlugin.Views 1.0

// A panel of text fields that set properties. What is typed takes effect with Return, or when the field is left; what
// isn't a value leaves things as they are.
Rectangle {
    id: panel

    /// A list of {words, owner, property} and, if need be, `guess`, what stands there while it's empty, `otherwise`,
    /// the number that an empty field means, `least`, the lowest number that it takes, `choices`, words of which the
    /// property is the number, and `isVague`, for a property that is undefined while the field is empty.
    property var fields: []
    property PlotTheme theme: PlotTheme { }
    /// What stands over the fields, and how high it may be.
    property alias above: top.data
    readonly property real roomAbove: height - grid.height - bottom.height - 2 * (content.anchors.margins + content.spacing)
    /// Items in a row under the fields.
    default property alias below: bottom.data

    /// The user gave the property of this field this value.
    signal fieldChanged(var field, var value)
    /// The user pressed Escape.
    signal closed()

    /// What a field shows.
    function textOf(field) {
        const value = field.owner[field.property];
        if (field.choices)
            return field.choices[value];

        return value === undefined || value === (field.otherwise || 0) ? "" : String(value);
    }

    /// As if the user had typed the text.
    function change(field, text) {
        const value = texts.meaningOf(field, text);
        if (value === null)
            return;

        field.owner[field.property] = value;
        fieldChanged(field, value);
    }

    Accessible.role: Accessible.Pane
    Keys.onEscapePressed: (event) => closed()
    border.color: theme.gridColor
    color: theme.panelColor
    focus: true
    implicitHeight: grid.height + bottom.height + 2 * (content.anchors.margins + content.spacing)
    implicitWidth: grid.width + 2 * content.anchors.margins
    radius: 6

    QtObject {
        id: texts

        /// What a text means for a field; an empty one means nothing special. Null for what isn't a value.
        function meaningOf(field, text) {
            if (field.choices)
                return field.choices.includes(text) ? field.choices.indexOf(text) : null;

            if (field.isVague)
                return text === "" ? undefined : text;

            if (typeof field.owner[field.property] !== "number")
                return text;

            const number = text === "" ? field.otherwise || 0 : Number(text);
            return isFinite(number) && (field.least === undefined || number >= field.least) ? number : null;
        }
    }

    component Words: Text {
        color: panel.theme.panelTextColor
        font: panel.theme.font
        textFormat: Text.PlainText
    }

    component Field: Rectangle {
        id: box

        property var field

        border.color: input.activeFocus ? panel.theme.accentColor : panel.theme.gridColor
        color: "transparent"
        height: input.implicitHeight + 8
        width: 170

        TextInput {
            id: input

            /// A word that is the same keeps what is being typed, when the property is told again.
            readonly property string told: panel.textOf(box.field)

            Accessible.role: Accessible.EditableText
            Accessible.name: box.field.words
            activeFocusOnTab: true
            anchors.fill: parent
            anchors.margins: 4
            clip: true
            color: panel.theme.panelTextColor
            font: panel.theme.font
            objectName: box.field.property
            selectByMouse: true
            text: told
            onEditingFinished: {
                panel.change(box.field, text);
                text = Qt.binding(() => told);
            }

            Words {
                opacity: 0.6
                text: box.field.guess || ""
                visible: input.text === ""
            }
        }
    }

    TapHandler {
        // what lies under it gets none
    }

    Column {
        id: content

        anchors.fill: parent
        anchors.margins: 12
        spacing: 8

        Column {
            id: top

            spacing: content.spacing
            visible: children.length > 0
            width: parent.width
        }

        Grid {
            id: grid

            columnSpacing: 20
            columns: 2
            rowSpacing: 4

            Repeater {
                model: panel.fields.length

                Row {
                    id: row

                    readonly property var field: panel.fields[index]

                    spacing: 10

                    Words {
                        anchors.verticalCenter: parent.verticalCenter
                        text: row.field.words
                        width: 125
                    }

                    Field {
                        field: row.field
                    }
                }
            }
        }

        Row {
            id: bottom
        }
    }
}
