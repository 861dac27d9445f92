// SPDX-License-Identifier: MIT
import QtQuick 2.14
import VorlixPlugin.Views 1.0

// How a file is read: its first lines as columns, and what was guessed, to be changed. What is changed is seen at once.
FieldPanel {
    id: panel

    /// Never null.
    property SeriesReader reader: SeriesReader { }
    property int lineCount: 20
    /// More fields, as those of a FieldPanel.
    property var moreFields: []

    /// The user gave this property of the reader this value. Not for `moreFields`.
    signal changed(string property, var value)

    Accessible.name: qsTr("How the file is read")
    fields: guesses.fields.concat(moreFields)
    onFieldChanged: (field, value) => {
        if (guesses.fields.includes(field))
            changed(field.property, value);
    }

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
        ].map(field => Object.assign({ "owner": panel.reader }, field))
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
            onTapped: panel.change(guesses.fields[2], String(column + 1))
        }
    }

    above: [
        Words {
            id: detected

            objectName: "detected"
            text: panel.reader.errorString || panel.reader.detected
            width: parent.width
            wrapMode: Text.Wrap
        },
        Flickable {
            clip: true
            contentHeight: table.height
            contentWidth: table.width
            height: panel.roomAbove - detected.height - 16
            width: parent.width

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
    ]
}
