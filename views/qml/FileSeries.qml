// SPDX-License-Identifier: MIT
import QtQuick 2.14
import VorlixPlugin.Views 1.0

// A file in a plot: what reads it, and the series that it's drawn as. Declared inside a PlotView, it's drawn there. The
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
    /// Why there is nothing to see of it, or not all, in words; empty if all is well.
    readonly property string problem: {
        if (reader.errorString !== "")
            return reader.errorString;

        return reader.badLines > 0 && !busy ? name + ": " + reader.detected : "";
    }

    visible: false
    Component.onCompleted: {
        shown.exchangeSeries();
        shownLookChanged.connect(shown.exchangeSeries);
    }

    QtObject {
        id: shown

        property PlotSeries series: null
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
            for (const name of ["name", "store", "start", "xOffset"])
                made[name] = Qt.binding(() => file[name]);
            made.xStore = Qt.binding(() => file.reader.xStore);
            made.step = Qt.binding(() => file.step || (file.reader.sampleRate > 0 ? 1 / file.reader.sampleRate : 1));
            made.opacity = Qt.binding(() => seriesOpacity);
            made.visible = before === null || before.visible;
            series = made;
            placeSeries(before);
            if (before !== null)
                before.destroy();
        }

        function placeSeries(before) {
            const view = file.parent;
            if (!(view instanceof PlotView))
                return ;

            const all = [];
            for (let i = 0; i < view.seriesList.length; ++i)
                all.push(view.seriesList[i]);
            const behind = before === null ? [] : all.splice(all.indexOf(before));
            behind.forEach(one => view.removeSeries(one));
            [series].concat(behind.slice(1)).forEach(one => view.addSeries(one));
        }
    }

    SeriesReader {
        id: fileReader

        source: file.source
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
