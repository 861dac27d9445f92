// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin.Views 1.0

// How a file is read, and where its values stand.
ReaderPanel {
    id: panel

    /// A FileSeries.
    property QtObject file
    property QtObject scene

    moreFields: [
        { "words": "First value at", "owner": scene, "property": "start", "guess": "0" },
        { "words": "Step of x", "owner": scene, "property": "step", "guess": "1", "least": 0 },
        { "words": "Unit of x", "owner": scene, "property": "unit" },
        { "words": "Average over", "owner": scene, "property": "smoothDepth", "guess": "1", "otherwise": 1, "least": 1 },
        { "words": "Shift along x", "owner": file, "property": "xOffset", "guess": "0" },
        { "words": "Scale along y", "owner": file, "property": "yFactor", "guess": "1", "otherwise": 1, "least": 1e-300 },
        { "words": "Factor in difference", "owner": scene, "property": "factor", "guess": "1", "otherwise": 1 }
    ]
    reader: file.reader
    onChanged: (property, value) => file.hints = Object.assign({}, file.hints, { [property]: value })

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
