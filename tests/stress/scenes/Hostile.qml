// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin 1.0

// Hands every property and operation what a script can hand over by mistake.
Item {
    id: root

    readonly property var subjects: [
        chart, plain, bars, exact, filled, decorator, node, alias, decimator, source, average, fixed, fixed2, minimal, reader
    ]
    readonly property var operations: [
        "addPlotter", "removePlotter", "mapPointToChart", "addFilter", "removeFilter", "removeAllPlotter", "resetZoomView",
        "exportImage", "lock_update", "unlock_update"
    ]
    readonly property var ours: [
        "chartRect", "adaptAreaToPlotters", "plotter", "shouldUpdate", "updateIntervalMs", "zoomRect", "adaptChartHeight",
        "name", "color", "visible", "zOrder", "data", "vectorDim", "plotterArea", "drawLayer", "showLegend", "chartArea",
        "xOffset", "borderWidth", "borderColor", "borderEnable", "enableGradient", "gradientColor", "mouseX", "mouseY",
        "active", "plotters", "area", "dataID", "numPoint", "depth", "mergeWidth", "percMargin", "type", "append",
        "interval", "repeat", "running", "numBin", "file", "binWidth"
    ]

    function values() {
        return [
            null, undefined, NaN, Infinity, -Infinity, 1e308, -1e308, 5e-324, -0.0, 0, -1, 2147483647, 4294967296,
            "", "text", "12", true, [], [1], [1, 2, 3], [NaN, Infinity], ["a", null], [null], {}, { x: 1 }, new Date(0),
            function() {}, Qt.rect(0, 0, 0, 0), Qt.rect(NaN, NaN, NaN, NaN), Qt.rect(0, 0, -1, -1),
            Qt.rect(-1e308, -1e308, 1e308, 1e308), Qt.point(NaN, 1), Qt.rgba(2, 2, 2, 2), root, bars, chart, node,
            [bars, null, bars], [root]
        ]
    }

    // One subject and one value after the other; true when all have had all.
    property int position: 0
    function strike(count) {
        const all = values()
        for (let i = 0; i < count; ++i, ++position) {
            const subject = subjects[position % subjects.length]
            const value = all[Math.floor(position / subjects.length) % all.length]
            for (const name of ours) {
                if (subject[name] === undefined)
                    continue
                if (name === "data" && subject instanceof Item) // an item's data are its children
                    continue
                try { subject[name] = value } catch (refused) {}
            }
            for (const name of operations) {
                if (typeof subject[name] !== "function")
                    continue
                try { subject[name](value) } catch (refused) {}
                try { subject[name]() } catch (refused) {}
            }
        }
        return position >= subjects.length * all.length
    }

    width: 200
    height: 100

    ChartArea { id: chart; anchors.fill: parent }
    IChartArea { id: plain; anchors.fill: parent }
    BarPlotter { id: bars; chartArea: chart }
    BarPlotterDx { id: exact; chartArea: chart }
    AreaPlotter { id: filled; chartArea: chart }
    BarDecorator { id: decorator; chartArea: chart }
    Filter1D { id: node }
    IFIlterU64 { id: alias }
    DecimatorU64 { id: decimator; chartArea: chart }
    RandomU64Data { id: source }
    MovingAvarangeU64 { id: average }
    FixedDecimatorU64 { id: fixed }
    FixedDecimator2D { id: fixed2 }
    MinimalWidth2D { id: minimal }
    SCSVReader { id: reader }
}
