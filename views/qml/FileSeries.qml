// SPDX-License-Identifier: MIT
import QtQuick 2.14
import VorlixPlugin.Views 1.0

// A file in a plot: what reads it, and the series that it's drawn as. With a PlotView as its parent, it's drawn there. The
// item itself shows nothing.
Item {
    id: file

    /// A path, a file: or qrc: URL, or "-" for standard input.
    property string source: ""
    /// "bars", "line" or "area"; empty: a line where a value is negative or x is a time, else bars.
    property string look: ""
    property real start: 0
    /// 0: what the file says, else 1.
    property real step: 0
    property real xOffset: 0
    /// Above 0; what the values are multiplied by.
    property real yFactor: 1
    /// How many values are averaged.
    property int depth: 1
    property real seriesOpacity: 1
    /// The SeriesReader, to change how the file is read; and what it's drawn as, another one once the look changes.
    readonly property alias reader: fileReader
    readonly property PlotSeries series: shown.series
    readonly property string name: source === "-" ? qsTr("standard input") : source.split("/").pop()
    /// Of the chosen column, and of x, as the file has them.
    readonly property string column: shown.told(reader.columnNames, reader.store)
    readonly property string unit: shown.told(reader.columnUnits, reader.store)
    readonly property string xUnit: shown.told(reader.columnUnits, reader.xStore) || (reader.sampleRate > 0 ? "s" : "")
    readonly property SeriesStore store: depth > 1 ? average.store : reader.store
    readonly property string shownLook: look || (shown.isLine ? "line" : "bars")
    /// Whether it's being read or averaged, and whether there is a number to show.
    readonly property bool busy: shown.isReading || average.busy
    readonly property bool hasNumbers: store !== null && store.count > store.gapCount
    /// Whether values may still come when all that is there was read: it's followed, or standard input.
    readonly property bool live: reader.follow || source === "-"
    /// How many came in the last second; 0 unless it's live.
    readonly property alias valuesPerSecond: rate.perSecond
    /// What is to be said of it, for people: how far it was read, what was guessed, or its problem.
    readonly property string told: {
        if (problem !== "" || !busy || live || source === "")
            return problem || (source === "" ? "" : name + ": " + reader.detected);

        const share = reader.progress > 0 ? Math.floor(100 * reader.progress) + " %, " : "";
        return qsTr("Reading %1: ").arg(name) + share + (reader.bytesPerSecond / 1e6).toFixed(1) + " MB/s";
    }
    /// Why there is nothing to see of it, or not all, in words; empty if all is well.
    readonly property string problem: {
        if (reader.errorString !== "")
            return reader.errorString;

        return reader.badLines > 0 && !busy ? name + ": " + reader.detected : "";
    }

    visible: false
    onParentChanged: shown.move()
    Component.onCompleted: {
        shown.exchangeSeries();
        shownLookChanged.connect(shown.exchangeSeries);
    }

    QtObject {
        id: shown

        property PlotSeries series: null
        property PlotView view: null ///< that draws it
        readonly property bool isTime: file.reader.xStore !== null && !isNaN(file.reader.xStore.startTime)
        readonly property bool isLine: isTime || file.store !== null && file.store.minimum < 0
        readonly property bool isReading: [SeriesReader.Null, SeriesReader.Loading].includes(file.reader.status)

        function told(texts, column) {
            return texts[file.reader.stores.indexOf(column)] || "";
        }

        /// Draws the same values in another way, in the same place among the others.
        function exchangeSeries() {
            const before = series;
            const made = (({ "bars": bars, "line": line, "area": area })[file.shownLook] || bars).createObject(file);
            for (const name of ["store", "start", "xOffset", "yFactor"])
                made[name] = Qt.binding(() => file[name]);
            made.name = Qt.binding(() => file.name + (file.yFactor !== 1 ? " × " + file.yFactor : ""));
            made.xStore = Qt.binding(() => file.reader.xStore);
            made.step = Qt.binding(() => file.step || (file.reader.sampleRate > 0 ? 1 / file.reader.sampleRate : 1));
            made.opacity = Qt.binding(() => seriesOpacity);
            made.visible = before === null || before.visible;
            series = made;
            if (view !== null && before !== null)
                placeSeries(before);
            if (before !== null)
                before.destroy();
            move();
        }

        /// To the view that is the parent now, on top of what is there.
        function move() {
            const next = file.parent instanceof PlotView ? file.parent : null;
            if (series === null || next === view)
                return ;

            if (view !== null)
                view.removeSeries(series);
            view = next;
            if (view !== null)
                view.addSeries(series);
        }

        /// In the place of the one before.
        function placeSeries(before) {
            const all = [];
            for (let i = 0; i < view.seriesList.length; ++i)
                all.push(view.seriesList[i]);
            if (!all.includes(before))
                return ;

            const behind = all.splice(all.indexOf(before));
            behind.forEach(one => view.removeSeries(one));
            [series].concat(behind.slice(1)).forEach(one => view.addSeries(one));
        }
    }

    SeriesReader {
        id: fileReader

        source: file.source
    }

    Timer {
        id: rate

        property real perSecond: 0
        property real before: 0

        function count() {
            const now = file.reader.store !== null ? file.reader.store.count : 0;
            perSecond = running && before > 0 ? Math.max(now - before, 0) : 0;
            before = now;
        }

        interval: 1000
        repeat: true
        running: file.live && (file.reader.store === null || !file.reader.store.complete)
        onRunningChanged: count()
        onTriggered: count()
    }

    MovingAverage {
        id: average

        depth: file.depth
        source: depth > 1 ? file.reader.store : null
    }

    Component { id: bars; BarSeries { } }

    Component { id: line; LineSeries { } }

    Component { id: area; AreaSeries { } }
}
