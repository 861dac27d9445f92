// SPDX-License-Identifier: MIT
import QtQuick 2.15

// How a file is read: its first lines as columns, and what was guessed, to be changed. What is changed is seen at once.
Rectangle {
    id: panel

    /// A FileSeries.
    property QtObject file
    property QtObject scene
    property QtObject theme
    readonly property var lines: desktop.firstLines(file.path, 20)
    readonly property var layout: file.reader.layout
    /// Which one is shown; not known if some are text.
    readonly property int chosen: file.reader.stores.length === table.widest ? file.reader.stores.indexOf(file.reader.store)
                                                                             : -1
    readonly property var fields: [
        field("Column", "column", "the first one that isn't x"),
        field("Column of x", "xColumn", "none"),
        field("Separator", "separator", { " ": "blanks", "\t": "tab" }[layout.separator] || layout.separator),
        field("Decimal point", "decimalPoint", layout.decimalPoint),
        field("Lines to skip", "skipLines", "0"),
        field("First value at", "start", "0", scene),
        field("Step of x", "step", "1", scene),
        field("Unit of x", "unit", "", scene),
        field("Average over", "smoothDepth", "1", scene)
    ]

    signal closed()

    /// Of the file's reader, unless it's of all files.
    function field(words, property, guess, owner) {
        return { "words": words, "property": property, "guess": guess || "", "owner": owner || file.reader };
    }

    function valueOf(field) {
        const value = field.owner[field.property];
        return value === undefined || value === 0 || value === 1 && field.property === "smoothDepth" ? "" : String(value);
    }

    /// Takes what was typed; what isn't a value leaves things as they are.
    function change(field, text) {
        const isNumber = ["skipLines", "start", "step", "smoothDepth"].includes(field.property);
        const isGood = isFinite(Number(text)) && (field.property === "start" || Number(text) >= 0);
        if (isNumber && !isGood)
            return ;

        const least = field.property === "smoothDepth" ? 1 : 0;
        const words = text === "" && /olumn/.test(field.property) ? undefined : text;
        const value = isNumber ? (text === "" ? least : Number(text)) : words;
        field.owner[field.property] = value;
        if (field.owner === file.reader)
            file.hints = Object.assign({}, file.hints, { [field.property]: value });
    }

    function cells(line) {
        const separator = layout.separator;
        return separator === undefined ? [line] : separator === " " ? line.trim().split(/\s+/) : line.split(separator);
    }

    Accessible.name: "How " + file.name + " is read"
    Accessible.role: Accessible.Dialog
    focus: true
    Keys.onEscapePressed: (event) => closed()
    border.color: theme.gridColor
    color: theme.panelColor
    radius: 6

    TapHandler {
        // what lies under it gets none
    }

    component Words: Text {
        color: panel.theme.panelTextColor
        font: panel.theme.font
        textFormat: Text.PlainText
    }

    Column {
        id: content

        anchors.fill: parent
        anchors.margins: 12
        spacing: 8

        Words {
            objectName: "detected"
            text: panel.file.problem || panel.file.name + ": " + panel.file.reader.detected
            width: content.width
            wrapMode: Text.Wrap
        }

        Flickable {
            clip: true
            contentHeight: table.height
            contentWidth: table.width
            height: content.height - y - rest.height - 8
            width: content.width

            Grid {
                id: table

                readonly property int widest: panel.lines.reduce((most, line) => Math.max(most, panel.cells(line).length), 1)

                columnSpacing: 16
                columns: Math.min(widest, 50)

                Repeater {
                    model: panel.lines.length * table.columns

                    Words {
                        readonly property int line: Math.floor(index / table.columns)
                        readonly property bool isHead: line < (panel.layout.headLines || 0)

                        font.bold: !isHead && index % table.columns === panel.chosen
                        opacity: isHead ? 0.6 : 1
                        text: panel.cells(panel.lines[line])[index % table.columns] || " "

                        TapHandler {
                            onTapped: panel.change(panel.fields[0], String(index % table.columns + 1))
                        }
                    }

                }

            }

        }

        Column {
            id: rest

            spacing: 6

            Grid {
                columnSpacing: 10
                columns: 2
                rowSpacing: 4

                Repeater {
                    model: panel.fields.length

                    Row {
                        readonly property var field: panel.fields[index]

                        spacing: 10

                        Words {
                            anchors.verticalCenter: parent.verticalCenter
                            text: field.words
                            width: 100
                        }

                        Rectangle {
                            border.color: input.activeFocus ? panel.theme.accentColor : panel.theme.gridColor
                            color: "transparent"
                            height: input.implicitHeight + 8
                            width: 180

                            TextInput {
                                id: input

                                Accessible.name: field.words
                                Accessible.role: Accessible.EditableText
                                activeFocusOnTab: true
                                anchors.fill: parent
                                anchors.margins: 4
                                clip: true
                                color: panel.theme.panelTextColor
                                font: panel.theme.font
                                objectName: field.property
                                selectByMouse: true
                                text: panel.valueOf(field)
                                onEditingFinished: {
                                    panel.change(field, text);
                                    text = Qt.binding(() => panel.valueOf(field));
                                }

                                Words {
                                    opacity: 0.6
                                    text: field.guess
                                    visible: input.text === ""
                                }
                            }
                        }
                    }
                }
            }

            Row {
                BarButton {
                    text: "Remember for *" + panel.file.kind
                    theme: panel.theme
                    visible: panel.file.kind !== ""
                    onClicked: desktop.remember("kinds/" + panel.file.kind, panel.file.hints)
                }

                BarButton {
                    text: "Close"
                    theme: panel.theme
                    onClicked: panel.closed()
                }

            }

        }

    }
}
