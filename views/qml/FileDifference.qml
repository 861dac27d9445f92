// SPDX-License-Identifier: MIT
import QtQuick 2.14
import VorlixPlugin.Views 1.0

// The difference of two files, value by value: the first less `factor` times the second. Declared inside a PlotView,
// it's drawn there, as a line. The item itself shows nothing.
Item {
    id: difference

    /// FileSeries, or null.
    property QtObject first: null
    property QtObject second: null
    property real factor: 1
    readonly property alias series: line
    /// Whether there is something to work out now, or a file is still being read.
    readonly property bool busy: subtraction.busy || [first, second].some(file => file !== null && file.busy)
    /// Why the difference can't be drawn, in words; empty if it can, or if that isn't known yet.
    readonly property string problem: {
        if (first === null || second === null)
            return qsTr("a difference needs two files");

        return !busy && places.of(first) !== places.of(second)
            ? qsTr("no difference: the values of the two files stand at different places") : "";
    }

    visible: false
    Component.onCompleted: places.draw()

    QtObject {
        id: places

        readonly property bool areDrawn: difference.second !== null && difference.problem === ""

        /// What tells whether values stand at the same places.
        function of(file) {
            const x = file.reader.xStore;
            return [file.start, file.series.step].concat(x !== null ? [x.count, x.minimum, x.maximum] : []).join();
        }

        function draw() {
            const view = difference.parent;
            if (!(view instanceof PlotView))
                return ;

            if (areDrawn)
                view.addSeries(line);
            else
                view.removeSeries(line);
        }

        onAreDrawnChanged: draw()
    }

    SeriesDifference {
        id: subtraction

        factor: difference.factor
        minuend: difference.second !== null && difference.first !== null ? difference.first.store : null
        subtrahend: difference.second !== null && difference.first !== null ? difference.second.store : null
    }

    LineSeries {
        id: line

        name: places.areDrawn ? difference.first.name + " − " + difference.second.name : ""
        start: difference.first !== null ? difference.first.start : 0
        step: difference.first !== null ? difference.first.series.step : 1
        store: subtraction.store
        xStore: difference.first !== null ? difference.first.reader.xStore : null
    }
}
