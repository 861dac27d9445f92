// SPDX-License-Identifier: MIT
import QtQuick 2.14
import VorlixPlugin.Views 1.0

// How a file is read: its first lines as columns, and what was guessed, to be changed. What is changed is seen at once.
Rectangle {
    id: panel

    /// Never null.
    property SeriesReader reader: SeriesReader { }
    property PlotTheme theme: PlotTheme { }
    property int lineCount: 20
    /// More fields: a list of {words, owner, property} and, if need be, `guess`, what stands there while it's empty,
    /// `otherwise`, the number that an empty field means, and `least`, the lowest number that it takes.
    property var moreFields: []
    /// Items in a row under the fields.
    default property alias below: bottom.data

    /// The user gave this property of the reader this value. Not for `moreFields`.
    signal changed(string property, var value)

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("How the file is read")
    border.color: theme.gridColor
    color: theme.panelColor
    radius: 6

    QtObject {
        id: guesses

        readonly property var layout: panel.reader.layout
        readonly property var lines: layout, panel.reader.firstLines(panel.lineCount)
        readonly property int widest: lines.reduce((most, line) => Math.max(most, line.length), 1)
        /// The shown column; not known if some are text.
        readonly property var stores: panel.reader.stores
        readonly property int chosen: stores.length === widest ? stores.indexOf(panel.reader.store) : -1
        readonly property var fields: [
            { "words": qsTr("Format"), "property": "format", "choices": ["auto", "text", "npy", "raw", "wav"] },
            { "words": qsTr("Samples"), "property": "sampleType",
              "choices": ["float64", "float32", "int32", "uint32", "int16", "uint16", "int8", "uint8"] },
            { "words": qsTr("Column"), "property": "column", "isVague": true,
              "guess": qsTr("the first one that isn't x") },
            { "words": qsTr("Column of x"), "property": "xColumn", "guess": qsTr("none"), "isVague": true },
            { "words": qsTr("Separator"), "property": "separator",
              "guess": ({ " ": qsTr("blanks"), "\t": qsTr("tab") })[layout.separator] || layout.separator },
            { "words": qsTr("Decimal point"), "property": "decimalPoint", "guess": layout.decimalPoint },
            { "words": qsTr("Lines to skip"), "property": "skipLines", "least": 0 }
        ].concat(panel.moreFields)

        function ownerOf(field) {
            return field.owner || panel.reader;
        }

        function textOf(field) {
            const value = ownerOf(field)[field.property];
            if (field.choices)
                return field.choices[value];

            return value === undefined || value === (field.otherwise || 0) ? "" : String(value);
        }

        /// What a text means for a field; an empty one means nothing special. Null for what isn't a value.
        function meaningOf(field, text) {
            if (field.choices)
                return field.choices.includes(text) ? field.choices.indexOf(text) : null;

            if (field.isVague)
                return text === "" ? undefined : text;

            if (typeof ownerOf(field)[field.property] !== "number")
                return text;

            const number = text === "" ? field.otherwise || 0 : Number(text);
            return isFinite(number) && (field.least === undefined || number >= field.least) ? number : null;
        }

        /// Takes what was typed; what isn't a value leaves things as they are.
        function change(field, text) {
            const value = meaningOf(field, text);
            if (value === null)
                return;

            ownerOf(field)[field.property] = value;
            if (!field.owner)
                panel.changed(field.property, value);
        }
    }

    component Words: Text {
        color: panel.theme.panelTextColor
        font: panel.theme.font
        textFormat: Text.PlainText
    }

    component Cell: Words {
        property int line
        property int column
        readonly property bool isHead: line < (guesses.layout.headLines || 0)

        font.bold: !isHead && column === guesses.chosen
        opacity: isHead ? 0.6 : 1
        text: (guesses.lines[line] || [])[column] || " "

        TapHandler {
            onTapped: guesses.change(guesses.fields[2], String(column + 1))
        }
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

            /// A word that is the same keeps what is being typed, when a file has been read again.
            readonly property string told: guesses.textOf(box.field)

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
                guesses.change(box.field, text);
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

        Words {
            objectName: "detected"
            text: panel.reader.errorString || panel.reader.detected
            width: content.width
            wrapMode: Text.Wrap
        }

        Flickable {
            clip: true
            contentHeight: table.height
            contentWidth: table.width
            height: content.height - y - grid.height - bottom.height - 2 * content.spacing
            width: content.width

            Grid {
                id: table

                columnSpacing: 16
                columns: Math.min(guesses.widest, 50)

                Repeater {
                    model: guesses.lines.length * table.columns

                    Cell {
                        column: index % table.columns
                        line: Math.floor(index / table.columns)
                    }
                }
            }
        }

        Grid {
            id: grid

            columnSpacing: 20
            columns: 2
            rowSpacing: 4

            Repeater {
                model: guesses.fields.length

                Row {
                    id: row

                    readonly property var field: guesses.fields[index]

                    spacing: 10

                    Words {
                        anchors.verticalCenter: parent.verticalCenter
                        text: row.field.words
                        width: 115
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
