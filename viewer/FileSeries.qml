// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin.Views 1.0

// One file: what reads it, and the series that it's drawn as. The item itself shows nothing.
Item {
    id: file

    property string path
    /// Properties of the reader that replace guesses.
    property var hints: ({})
    /// Has start, step, smoothDepth and look for all files.
    property QtObject scene
    /// Several series let each other through.
    property bool isOver: false
    readonly property alias reader: source
    /// What files that are read alike have in common: ".csv".
    readonly property string kind: (path.match(/\.[^./]+$/) || [""])[0]
    readonly property string name: path === "-" ? "standard input" : path.split("/").pop()
    readonly property SeriesStore store: scene.smoothDepth > 1 ? average.store : source.store
    readonly property SeriesStore xStore: source.xStore
    readonly property bool busy: source.status === SeriesReader.Null || source.status === SeriesReader.Loading || average.busy
    readonly property bool hasNumbers: store !== null && store.count > store.gapCount
    readonly property bool isTime: xStore !== null && !isNaN(xStore.startTime)
    readonly property bool isLine: isTime || store !== null && store.minimum < 0
    readonly property string look: scene.look || (isLine ? "line" : "bars")
    readonly property real start: scene.start
    readonly property real step: scene.step || (source.sampleRate > 0 ? 1 / source.sampleRate : 1)
    readonly property string xUnit: xStore !== null ? textOf(source.columnUnits, xStore) : source.sampleRate > 0 ? "s" : ""
    readonly property string column: textOf(source.columnNames, source.store)
    readonly property string unit: textOf(source.columnUnits, source.store)
    readonly property real strength: isOver && look !== "line" ? 0.6 : 1
    /// Why there is nothing to see of it, or not all, in words.
    readonly property string problem: {
        if (source.errorString !== "")
            return source.errorString;

        return source.badLines > 0 && !busy ? name + ": " + source.detected : "";
    }
    property PlotSeries series: null

    /// The series is another one now.
    signal exchanged()

    /// What the reader says of a column: its name or its unit.
    function textOf(texts, column) {
        return texts[source.stores.indexOf(column)] || "";
    }

    /// Draws the same values in another way.
    function exchangeSeries() {
        const before = series;
        const made = ({ "bars": bars, "line": line, "area": area })[look].createObject(file);
        for (const name of ["name", "store", "xStore", "start", "step"])
            made[name] = Qt.binding(() => file[name]);
        made.opacity = Qt.binding(() => file.strength);
        made.visible = before === null || before.visible;
        series = made;
        exchanged();
        if (before !== null)
            before.destroy();
    }

    Component.onCompleted: {
        hints = Object.assign({}, desktop.remembered("kinds/" + kind, {}), hints);
        for (const name in hints)
            source[name] = hints[name];
        exchangeSeries();
        lookChanged.connect(exchangeSeries);
    }

    SeriesReader {
        id: source

        source: file.path
    }

    MovingAverage {
        id: average

        depth: file.scene.smoothDepth
        source: depth > 1 ? file.reader.store : null
    }

    Component { id: bars; BarSeries { } }

    Component { id: line; LineSeries { } }

    Component { id: area; AreaSeries { } }
}
